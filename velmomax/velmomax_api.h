/// The host's API as the toolkit uses it. On Windows the host's headers bring macros that rename functions, so a source
/// that needs headers of libvelmodsp includes those first.
#pragma once

#include "ext.h"
// The host asks for ext.h before all its other headers.
#include "commonsyms.h"
#include "ext_dictobj.h"
#include "ext_obex.h"
#include "ext_path.h"
#include "z_dsp.h"

namespace velmomax {

/// A callback of any shape as the one pointer type in which the host takes callbacks.
template <typename Result, typename... Arguments>
method AsMethod(Result (*callback)(Arguments...)) noexcept {
    return reinterpret_cast<method>(callback);
}

}  // namespace velmomax
