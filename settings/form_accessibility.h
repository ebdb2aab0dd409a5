// Tells screen readers what those parts of the form are that the toolkit has no word for.
#pragma once

namespace amperly {

/// To be called before the parts are made. Once is enough; more is harmless.
void describeFormToScreenReaders();

} // namespace amperly
