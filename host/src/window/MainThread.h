#pragma once

namespace velmohost {

/// Whether the caller runs on the main thread: the one that started the program, on which plug-ins are loaded, objects
/// created and messages sent. Any thread, real-time safe.
bool IsMainThread() noexcept;

}  // namespace velmohost
