#pragma once

#include <string>

#include "utils/VelmoDspException.h"

/// The message of the library's exception that `action` throws, "nothing was thrown" when it throws none.
template <class Action>
std::string MessageOf(Action action) {
    try {
        action();
    } catch (const velmodsp::Exception& exception) {
        return exception.what();
    }
    return "nothing was thrown";
}
