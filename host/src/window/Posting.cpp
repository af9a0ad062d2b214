// The API's posting functions: rows of the Max window, from any thread.

#include <cstdarg>
#include <string>
#include <utility>

#include "core/AtomText.h"
#include "core/OutOfMemory.h"
#include "ext.h"
#include "ext_obex.h"
#include "ext_post.h"
#include "window/MainThread.h"
#include "window/MaxWindow.h"

namespace {

using velmohost::RowKind;

/// The class's name, by which a row tells whose it is; null for no object. Reads memory only.
const char* NameOf(t_object* x) { return NOGOOD(x) ? nullptr : ob_name(x); }

/// Text of `poststring` and `postatom` that waits for the end of its row; main thread only.
std::string& ComposedRow() {
    static std::string* const row = new std::string;
    return *row;
}
const std::string& builtAtStart = ComposedRow();  // no row has to wait for memory

void AddToComposedRow(const std::string& text) try {
    if (!velmohost::IsMainThread()) {
        velmohost::PostRow(RowKind::Post, nullptr, text.c_str());
        return;
    }
    ComposedRow() += (ComposedRow().empty() ? "" : " ") + text;
} catch (const std::bad_alloc&) {
    velmohost::OutOfMemory{};
}

void EndComposedRow() {
    if (!velmohost::IsMainThread() || ComposedRow().empty()) return;
    velmohost::PostRow(RowKind::Post, nullptr, std::exchange(ComposedRow(), {}).c_str());
}

}  // namespace

// A row formatted from the caller's variable arguments, which follow the parameter `format`.
#define POST_FORMATTED(kind, name, format)                          \
    do {                                                            \
        EndComposedRow();                                           \
        std::va_list arguments;                                     \
        va_start(arguments, format);                                \
        velmohost::PostFormattedRow(kind, name, format, arguments); \
        va_end(arguments);                                          \
    } while (false)

void post(const char* fmt, ...) { POST_FORMATTED(RowKind::Post, nullptr, fmt); }

void cpost(const char* fmt, ...) { POST_FORMATTED(RowKind::Console, nullptr, fmt); }

void error(const char* fmt, ...) { POST_FORMATTED(RowKind::Error, nullptr, fmt); }

void object_post(t_object* x, const char* s, ...) { POST_FORMATTED(RowKind::Post, NameOf(x), s); }

void object_error(t_object* x, const char* s, ...) { POST_FORMATTED(RowKind::Error, NameOf(x), s); }

void object_warn(t_object* x, const char* s, ...) { POST_FORMATTED(RowKind::Warning, NameOf(x), s); }

void object_bug(t_object* x, const char* s, ...) { POST_FORMATTED(RowKind::Bug, NameOf(x), s); }

void object_error_obtrusive(t_object* x, const char* s, ...) { POST_FORMATTED(RowKind::Error, NameOf(x), s); }

void object_poststring(t_object* x, long kind, const char* s) {
    EndComposedRow();
    switch (kind) {
        case POSTROW_ERROR:
            return velmohost::PostRow(RowKind::Error, NameOf(x), s);
        case POSTROW_WARNING:
            return velmohost::PostRow(RowKind::Warning, NameOf(x), s);
        case POSTROW_BUG:
            return velmohost::PostRow(RowKind::Bug, NameOf(x), s);
        default:
            return velmohost::PostRow(RowKind::Post, NameOf(x), s);
    }
}

void poststring(const char* s) { AddToComposedRow(s); }

void postatom(t_atom* ap) { AddToComposedRow(velmohost::AtomsToText(1, ap)); }
