// The moment of the user's last dealing with this program, as window managers on X11 know it.
// They compare it between programs to decide who may come to the front.
#pragma once

namespace amperly {

/// Says that the user deals with this program now. Does nothing on other windowing systems.
void takeUserTime();

} // namespace amperly
