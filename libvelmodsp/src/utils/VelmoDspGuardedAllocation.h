#pragma once

#include <exception>
#include <new>

#include "utils/VelmoDspBacktrace.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {

/// Runs `growth`, which makes a container larger, and turns what it throws into an `Exception` that says what happened
/// and names the function that called the one this stands in. An `Exception` passes through unchanged.
///
/// Always inlined: the function to be named is found by its place on the call stack, where this one must not appear.
/// The function that uses this must itself not be inlined (`[[gnu::noinline]]`) for the name to be right.
template <typename Growth>
[[gnu::always_inline]] inline void GuardGrowth(const Growth& growth) {
    try {
        growth();
    } catch (const Exception&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw Exception("out of memory occured in " + Backtrace::GetCallerFunctionName(), "", 0, false, false);
    } catch (const std::exception& cause) {
        throw Exception(String("exception ") + cause.what() + " occured in " + Backtrace::GetCallerFunctionName(), "",
                        0, false, false);
    } catch (...) {
        throw Exception("unknown exception occured in " + Backtrace::GetCallerFunctionName(), "", 0, false, false);
    }
}

}  // namespace velmodsp
