#include "window/MaxWindow.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <thread>
#include <utility>

#include "window/MainThread.h"
#include "window/RowQueue.h"

namespace velmohost {
namespace {

// Initialised while the program starts, hence by its main thread.
const std::thread::id mainThread = std::this_thread::get_id();

/// The window's state: the queue is shared, the sink belongs to the main thread.
struct MaxWindow {
    RowQueue queue;
    MaxWindowSink sink;
};

// Never destroyed: objects may post while the program ends. Built before the first other thread can exist.
MaxWindow& GetMaxWindow() {
    static MaxWindow* const window = new MaxWindow;
    return *window;
}
const MaxWindow& builtAtStart = GetMaxWindow();

const char* KindName(RowKind kind) {
    switch (kind) {
        case RowKind::Post:
            return "post";
        case RowKind::Warning:
            return "warning";
        case RowKind::Error:
            return "error";
        case RowKind::Bug:
            return "bug";
        case RowKind::Console:
            return "console";
    }
    return "post";
}

void Show(RowKind kind, const std::string& objectName, const std::string& text) {
    const MaxWindowSink& sink = GetMaxWindow().sink;
    sink ? sink(kind, objectName, text) : PrintRow(kind, objectName, text);
}

std::string FormatText(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

}  // namespace

bool IsMainThread() noexcept { return std::this_thread::get_id() == mainThread; }

void PostFormattedRow(RowKind kind, const char* objectName, const char* format, std::va_list arguments) noexcept {
    if (!IsMainThread()) {
        GetMaxWindow().queue.Push(kind, objectName, format, arguments);
        return;
    }
    std::va_list again;
    va_copy(again, arguments);
    try {
        DrainMaxWindow();  // what waits was posted earlier
        Show(kind, objectName != nullptr ? objectName : "", FormatText(format, arguments));
    } catch (const std::bad_alloc&) {
        GetMaxWindow().queue.Push(kind, objectName, format, again);  // has its memory already
    }
    va_end(again);
}

namespace {

[[gnu::format(printf, 3, 4)]] void PostPrintf(RowKind kind, const char* objectName, const char* format, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, format);
    PostFormattedRow(kind, objectName, format, arguments);
    va_end(arguments);
}

}  // namespace

void PostRow(RowKind kind, const char* objectName, const char* text) noexcept {
    PostPrintf(kind, objectName, "%s", text);
}

void DrainMaxWindow() noexcept try {
    MaxWindow& window = GetMaxWindow();
    while (const WaitingRow* const row = window.queue.Peek()) {
        Show(row->kind, row->objectName.data(), row->text.data());
        window.queue.Drop();
    }
    const auto numLost = static_cast<unsigned long long>(window.queue.TakeNumLost());
    if (numLost > 0) {
        Show(RowKind::Warning, "",
             std::to_string(numLost) + (numLost == 1 ? " row was" : " rows were") +
                 " lost: more came from the audio thread than the Max window can hold");
    }
} catch (const std::bad_alloc&) {  // the rest goes on waiting
}

void PrintRow(RowKind kind, const std::string& objectName, const std::string& text) {
    if (kind == RowKind::Console) {
        std::fprintf(stderr, "%s\n", text.c_str());
    } else {
        PrintWindowLine(FormatRow(kind, objectName, text));
    }
}

void SetMaxWindowSink(MaxWindowSink sink) { GetMaxWindow().sink = std::move(sink); }

std::string FormatRow(RowKind kind, const std::string& objectName, const std::string& text) {
    std::string row = std::string("[") + KindName(kind) + "] " + (objectName.empty() ? "" : objectName + ": ") + text;
    while (!row.empty() && (row.back() == '\n' || row.back() == '\r')) row.pop_back();
    std::replace_if(
        row.begin(), row.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return row;
}

void PrintWindowLine(const std::string& line) {
    std::fprintf(stdout, "%s\n", line.c_str());
    std::fflush(stdout);  // whatever an object does next, its rows are out
}

}  // namespace velmohost
