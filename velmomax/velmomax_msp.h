/// What signal objects of the suite share: the leading record, their messages, their inlets and outlets.
#pragma once

#include <cstdint>
#include <type_traits>

#include "dsp/VelmoDspSharedWord.h"

#include "velmomax_api.h"

namespace velmomax {

/// The leading record of every signal object; the object's own fields follow it. The host allocates it as zero bytes,
/// which is a valid start for every field.
struct _VelmoMspObject {
    t_pxobject ob;               ///< the host's signal object header; must come first
    t_object* box;               ///< the object's box in its patcher; may be null
    t_symbol* classdescription;  ///< storage of the documentation attribute of this name, as the next three
    t_symbol* classdigest;
    t_symbol* externalversion;
    t_symbol* classseealso;
    velmodsp::SharedWord<long> mute;    ///< 1: muted; set by any thread, read by the audio thread
    velmodsp::SharedWord<long> bypass;  ///< 1: bypassed; as `mute`
};
static_assert(std::is_standard_layout_v<_VelmoMspObject>, "attributes address fields by their byte offset");
static_assert(sizeof(_VelmoMspObject::mute) == sizeof(long) && sizeof(_VelmoMspObject::bypass) == sizeof(long));

/// The host's `z_disabled`: non-zero while the host has disabled the object. Any thread, real-time safe.
inline long GetDisabled(const _VelmoMspObject* x) noexcept {
    // The host keeps a plain word there and writes it while audio runs, so it is read as the single word that it is.
    return __atomic_load_n(&x->ob.z_disabled, __ATOMIC_RELAXED);
}

/// Adds "postdspstatus", which posts whether the object processes and whether the host's audio is on. Main thread.
void AddMspMethods(t_class* c) noexcept;

/// Adds `m` as the object's "dsp64", called each time the host builds its signal chain. Main thread.
void AddDspChainMethod(t_class* c, method m) noexcept;

/// Adds `m` as "postdspstate", which posts the object's connections. Main thread.
void AddPostDspInletsStatus(t_class* c, method m) noexcept;

/// Gives the object `numIn` signal inlets and `numOut` signal outlets. `noInPlace` asks the host for separate input and
/// output sample buffers. Main thread, in the constructor, after the dump outlet.
/// @throws std::bad_alloc when the host has no memory for all outlets: it would hand over fewer buffers than the object
/// writes to
void CreateDspInletsAndOutlets(_VelmoMspObject* x, std::uint32_t numIn, std::uint32_t numOut, bool noInPlace);

/// Takes the object out of the signal chain; the first thing in its free function. Main thread.
void RemoveFromDspChain(_VelmoMspObject* x) noexcept;

/// Handler of "postdspstatus".
void postdspstatus(_VelmoMspObject* x) noexcept;

}  // namespace velmomax
