#pragma once

#include <cstdarg>
#include <cstddef>
#include <functional>
#include <string>

/// The Max window: where the host and its objects tell the user what happened, row by row.
///
///     PostRow(RowKind::Error, "tesk.fixnan~", "No such object");   // shown as "[error] tesk.fixnan~: No such object"
///     DrainMaxWindow();                                            // main thread: shows what other threads posted
///
/// Rows of the main thread are shown at once. Rows of every other thread, above all the audio thread, wait in a queue
/// of fixed size until the main thread drains it. A row that finds the queue full is counted, and the count is shown
/// after the rows that did fit. A row that there is no memory to show waits in the queue as well.
namespace velmohost {

/// What a row is. `Console` rows belong to the system console rather than to the window: standard error shows them.
enum class RowKind { Post, Warning, Error, Bug, Console };

/// Rows that wait for the main thread at most, and the bytes (end mark included) that a waiting row's parts can hold.
/// Longer texts are cut there; rows of the main thread are never cut.
inline constexpr std::size_t kMaxWaitingRows = 1024;
inline constexpr std::size_t kMaxWaitingNameBytes = 64;
inline constexpr std::size_t kMaxWaitingTextBytes = 440;

/// Shows a row, `objectName` being the object's class or null for a row without an object.
/// Any thread. Real-time safe on every thread but the main one: no lock, no allocation.
void PostRow(RowKind kind, const char* objectName, const char* text) noexcept;

/// The same with a text formatted as by printf.
void PostFormattedRow(RowKind kind, const char* objectName, const char* format, std::va_list arguments) noexcept;

/// Shows the rows that wait, in the order in which they were posted, then how many were lost. Those that there is no
/// memory to show go on waiting. Main thread.
void DrainMaxWindow() noexcept;

/// Shows a row on the standard output, `Console` rows on standard error, whatever sink is set. Main thread.
void PrintRow(RowKind kind, const std::string& objectName, const std::string& text);

/// Takes the rows in place of `PrintRow`. Called on the main thread only; posts nothing itself.
using MaxWindowSink = std::function<void(RowKind kind, const std::string& objectName, const std::string& text)>;

/// Sends the rows to `sink` from now on; an empty one brings `PrintRow` back. Main thread.
void SetMaxWindowSink(MaxWindowSink sink);

/// The row as the standard output shows it, without the line's end: "[error] NAME: TEXT", or "[error] TEXT" when the
/// name is empty. Line breaks within the text become blanks, so that a row stays a line.
std::string FormatRow(RowKind kind, const std::string& objectName, const std::string& text);

/// Prints a line of the window that is not a row, such as what left the dump outlet, to the standard output at once.
void PrintWindowLine(const std::string& line);

}  // namespace velmohost
