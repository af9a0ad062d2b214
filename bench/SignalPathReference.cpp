#include "SignalPathReference.h"

#include <cmath>

// Compiled with -O2, at which g++ 12 vectorises no loop whose length it does not know; clang would, so it is told not
// to.
#if defined(__clang__)
#define SCALAR_LOOP _Pragma("clang loop vectorize(disable) interleave(disable)")
#else
#define SCALAR_LOOP
#endif

namespace velmodsp::bench {

namespace {

void Narrow(float* out, const double* in, unsigned long n) {
    SCALAR_LOOP
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<float>(in[i]);
}

void Widen(double* out, const float* in, unsigned long n) {
    SCALAR_LOOP
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<double>(in[i]);
}

void RepairByLastValue(float* out, const float* in, unsigned long n, float& last) {
    SCALAR_LOOP
    for (unsigned long i = 0; i < n; ++i) {
        if (std::isfinite(in[i])) last = in[i];
        out[i] = last;
    }
}

void RepairByGivenValue(float* out, const float* in, unsigned long n, float value) {
    SCALAR_LOOP
    for (unsigned long i = 0; i < n; ++i) out[i] = std::isfinite(in[i]) ? in[i] : value;
}

}  // namespace

ReferencePath::ReferencePath(unsigned int numberOfChannels, unsigned long blockSize, bool byLastValue)
    : numChannels(numberOfChannels),
      lastValue(byLastValue),
      narrow(numChannels, blockSize, true),
      repaired(numChannels, blockSize, true),
      last(numChannels, 0.0f) {}

void ReferencePath::Perform(double** outs, const double** ins, unsigned long n) {
    for (unsigned int k = 0; k < numChannels; ++k) Narrow(narrow.GetChannel(k), ins[k], n);
    for (unsigned int k = 0; k < numChannels; ++k) {
        if (lastValue) {
            RepairByLastValue(repaired.GetChannel(k), narrow.GetChannel(k), n, last[k]);
        } else {
            RepairByGivenValue(repaired.GetChannel(k), narrow.GetChannel(k), n, 0.0f);
        }
    }
    for (unsigned int k = 0; k < numChannels; ++k) Widen(outs[k], repaired.GetChannel(k), n);
}

}  // namespace velmodsp::bench
