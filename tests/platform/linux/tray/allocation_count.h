// How often the program asked for memory, in this test program.
#pragma once

namespace amperly::test {

[[nodiscard]] long allocationCount();

} // namespace amperly::test
