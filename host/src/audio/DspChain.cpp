#include "audio/DspChain.h"

#include <algorithm>
#include <utility>

#include "audio/DisabledFlag.h"
#include "audio/DspObject.h"
#include "audio/DspSettings.h"
#include "box/Box.h"
#include "core/Messages.h"
#include "core/Objects.h"
#include "core/PluginCall.h"
#include "realtime/RealtimeContext.h"

namespace velmohost {
namespace {

// The chains that are started; main thread only.
std::vector<DspChain*>& StartedChains() {
    static std::vector<DspChain*> chains;
    return chains;
}

bool IsConnected(const std::vector<bool>& connected, unsigned index) {
    return index < connected.size() && connected[index];
}

bool RefusesInPlace(const t_object* object) {
    return (reinterpret_cast<const t_pxobject*>(object)->z_misc & Z_NO_INPLACE) != 0;
}

}  // namespace

DspChain::DspChain() = default;

DspChain::~DspChain() { Stop(); }

void DspChain::Start(Box& box, double rate, long size, const std::vector<bool>& inletsConnected,
                     const std::vector<bool>& outletsConnected, unsigned long maximum) {
    Stop();
    SetDspSettings({rate, size, true});
    object = box.Object();
    samplerate = rate;
    vectorSize = size;
    maxVectors = maximum;
    numInlets = box.NumSignalInlets();
    numOutlets = box.NumSignalOutlets();
    StartedChains().push_back(this);
    LayOutBuffers(inletsConnected);
    AskObject(inletsConnected, outletsConnected);
}

void DspChain::Stop() {
    if (object == nullptr) return;
    std::erase(StartedChains(), this);
    entries.clear();
    if (dspObject != nullptr) object_free(dspObject);
    object = dspObject = nullptr;
    SetDspSettings({samplerate, vectorSize, !StartedChains().empty()});
}

void DspChain::LayOutBuffers(const std::vector<bool>& inletsConnected) {
    const std::size_t perBuffer = static_cast<std::size_t>(vectorSize) * maxVectors;
    zeros.assign(static_cast<std::size_t>(vectorSize), 0.0);
    samples.assign(perBuffer * (numInlets + numOutlets), 0.0);
    double* next = samples.data();
    const auto takeBuffer = [&next, perBuffer] { return std::exchange(next, next + perBuffer); };

    inletBase.assign(numInlets, nullptr);
    for (unsigned inlet = 0; inlet < numInlets; ++inlet) {
        if (IsConnected(inletsConnected, inlet)) inletBase[inlet] = takeBuffer();
    }
    const bool inPlace = numInlets > 0 && !RefusesInPlace(object);
    outletBase.assign(numOutlets, nullptr);
    for (unsigned outlet = 0; outlet < numOutlets; ++outlet) {
        const bool shared = inPlace && outlet < numInlets && inletBase[outlet] != nullptr;
        outletBase[outlet] = shared ? inletBase[outlet] : takeBuffer();
    }
    ins.assign(numInlets, nullptr);
    outs.assign(numOutlets, nullptr);
}

void DspChain::AskObject(const std::vector<bool>& inletsConnected, const std::vector<bool>& outletsConnected) {
    // Connections of the signal inlets, then of the signal outlets; objects also read entries of their other outlets.
    std::vector<short> counts(numInlets + numOutlets + GetInlets(object).size() + GetOutlets(object).size(), 0);
    for (unsigned inlet = 0; inlet < numInlets; ++inlet) counts[inlet] = IsConnected(inletsConnected, inlet);
    for (unsigned outlet = 0; outlet < numOutlets; ++outlet) {
        counts[numInlets + outlet] = IsConnected(outletsConnected, outlet);
    }
    entries.reserve(1);  // here a lack of memory can be told; the object could only leave itself out
    dspObject = NewDspObject(*this);
    CallMethod(object, gensym("dsp64"), dspObject, counts.data(), samplerate, vectorSize, 0L);
}

double* DspChain::InletSamples(unsigned inlet) noexcept { return inletBase[inlet]; }

const double* DspChain::OutletSamples(unsigned outlet) const noexcept { return outletBase[outlet]; }

void DspChain::ProcessVectors(unsigned long numVectors) noexcept {
    for (unsigned long index = 0; index < numVectors; ++index) {
        const RealtimeContext realtime;
        PointAtVector(index);
        if (RunEntries()) continue;
        for (double* out : outs) std::fill_n(out, vectorSize, 0.0);
    }
}

void DspChain::PointAtVector(unsigned long vectorIndex) noexcept {
    const std::size_t offset = vectorIndex * static_cast<std::size_t>(vectorSize);
    for (unsigned inlet = 0; inlet < numInlets; ++inlet) {
        ins[inlet] = inletBase[inlet] != nullptr ? inletBase[inlet] + offset : zeros.data();
    }
    for (unsigned outlet = 0; outlet < numOutlets; ++outlet) outs[outlet] = outletBase[outlet] + offset;
}

bool DspChain::RunEntries() noexcept {
    bool anyRan = false;
    for (const Entry& entry : entries) {
        const auto* const signalObject = reinterpret_cast<const t_pxobject*>(entry.object);
        if (IsDisabled(signalObject) && (signalObject->z_misc & Z_IGNORE_DISABLE) == 0) continue;
        CallPlugin<void>(reinterpret_cast<method>(entry.perform), entry.object, dspObject, ins.data(),
                         static_cast<long>(numInlets), outs.data(), static_cast<long>(numOutlets), vectorSize,
                         entry.flags, entry.userParameter);
        anyRan = true;
    }
    return anyRan;
}

void DspChain::Add(t_object* owner, t_perfroutine64 perform, long flags, void* userParameter) {
    if (owner != nullptr && perform != nullptr) entries.push_back({owner, perform, flags, userParameter});
}

void DspChain::RemoveFromAll(const t_object* owner) {
    for (DspChain* chain : StartedChains()) {
        std::erase_if(chain->entries, [owner](const Entry& entry) { return entry.object == owner; });
    }
}

}  // namespace velmohost
