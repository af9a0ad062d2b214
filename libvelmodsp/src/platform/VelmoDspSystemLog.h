#pragma once

namespace velmodsp {

/// Writes `text` (zero-terminated) to the system log under the identity "velmodsp" at notice priority, as one entry,
/// with a copy on standard error. Without a system log the copy remains. Errors are ignored. Any thread.
void WriteToSystemLog(const char* text);

}  // namespace velmodsp
