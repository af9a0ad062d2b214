// The API of the audio library: what a signal object needs of its class, its inlets and the audio settings.

#include <algorithm>
#include <atomic>
#include <limits>

#include "audio/DisabledFlag.h"
#include "audio/DspChain.h"
#include "audio/DspObject.h"
#include "audio/DspSettings.h"
#include "core/OutOfMemory.h"
#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

namespace velmohost {
namespace {

// Written by the main thread while audio rests, read by any.
std::atomic<double> samplerate{DspSettings{}.samplerate};
std::atomic<long> vectorSize{DspSettings{}.vectorSize};
std::atomic<bool> running{false};
static_assert(std::atomic<double>::is_always_lock_free && std::atomic<long>::is_always_lock_free);

}  // namespace

DspSettings GetDspSettings() noexcept {
    return {samplerate.load(std::memory_order_relaxed), vectorSize.load(std::memory_order_relaxed),
            running.load(std::memory_order_relaxed)};
}

void SetDspSettings(const DspSettings& settings) noexcept {
    samplerate.store(settings.samplerate, std::memory_order_relaxed);
    vectorSize.store(settings.vectorSize, std::memory_order_relaxed);
    running.store(settings.running, std::memory_order_relaxed);
}

namespace {

// The messages that every signal object answers.

void* IgnoreSignal(t_pxobject*) { return nullptr; }
t_ptr_int AllowConnection(t_pxobject*) { return 1; }
t_ptr_int CountSignalInlets(t_pxobject* x) { return x->z_count; }
void Enable(t_pxobject* x, t_atom_long on) { SetDisabled(x, on == 0); }

void** AllocateProxies(long count) {
    return reinterpret_cast<void**>(sysmem_newptrclear(static_cast<t_ptr_size>(count) * sizeof(void*)));
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

void class_dspinit(t_class* c) {
    class_addmethod(c, reinterpret_cast<method>(IgnoreSignal), "signal", A_CANT, 0);
    class_addmethod(c, reinterpret_cast<method>(AllowConnection), "userconnect", A_CANT, 0);
    class_addmethod(c, reinterpret_cast<method>(CountSignalInlets), "nsiginlets", A_CANT, 0);
    class_addmethod(c, reinterpret_cast<method>(Enable), "enable", A_LONG, 0);
}

void z_dsp_setup(t_pxobject* x, long nsignals) {
    const long count = std::clamp(nsignals, 0L, static_cast<long>(std::numeric_limits<short>::max()));
    x->z_in = 0;
    SetDisabled(x, false);
    x->z_count = static_cast<short>(count);
    x->z_proxy = nullptr;
    if (count < 2) return;  // the left inlet is there already
    auto** const proxies = AllocateProxies(count - 1);
    if (proxies == nullptr) return void(OutOfMemory());
    for (long inlet = count - 1; inlet > 0; --inlet) proxies[inlet - 1] = proxy_new(x, inlet, &x->z_in);
    x->z_proxy = proxies;
}

void z_dsp_free(t_pxobject* x) {
    DspChain::RemoveFromAll(&x->z_ob);
    auto** const proxies = static_cast<void**>(x->z_proxy);
    if (proxies == nullptr) return;
    for (long index = 0; index < x->z_count - 1; ++index) object_free(proxies[index]);
    sysmem_freeptr(proxies);
    x->z_proxy = nullptr;
}

void dsp_add64(t_object* chain, t_object* x, t_perfroutine64 f, long flags, void* userparam) try {
    if (DspChain* const dspChain = GetDspChain(chain)) dspChain->Add(x, f, flags, userparam);
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

float sys_getsr(void) { return static_cast<float>(GetDspSettings().samplerate); }

int sys_getblksize(void) { return static_cast<int>(GetDspSettings().vectorSize); }

int sys_getmaxblksize(void) { return static_cast<int>(kMaxVectorSize); }

int sys_getdspstate(void) { return GetDspSettings().running ? 1 : 0; }

int sys_getdspobjdspstate(t_object*) { return sys_getdspstate(); }
