#pragma once

namespace velmohost {

/// What a program built with `velmo_check_realtime` knows of its real-time contexts. In such a context
///   - the RealtimeSanitizer run-time library ends the program when somebody allocates, frees, locks a mutex, opens a
///     file and so on through the C library, be it in the program, a plug-in or the C++ library;
///   - the system ends it upon any call of the system, however it is made (see SystemCallTrap.h);
///   - page faults are counted, which neither of them sees.

/// Page faults of all real-time contexts so far: memory or code touched for the first time. Any thread.
unsigned long CountRealtimePageFaults() noexcept;

}  // namespace velmohost
