#pragma once

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

namespace velmohost {

// "enable" comes at any time, also while the audio thread looks at the word. The API has a plain word there, which is
// read and written as the single one that it is. Any thread, real-time safe.

/// Whether the object is switched off.
inline bool IsDisabled(const t_pxobject* x) noexcept { return __atomic_load_n(&x->z_disabled, __ATOMIC_RELAXED) != 0; }

/// Switches the object off or on.
inline void SetDisabled(t_pxobject* x, bool disabled) noexcept {
    __atomic_store_n(&x->z_disabled, disabled ? 1L : 0L, __ATOMIC_RELAXED);
}

}  // namespace velmohost
