#include "dsp/VelmoDspMultiDownsampler.h"

namespace velmodsp {

MultiDownsampler::MultiDownsampler(unsigned int numChannels, unsigned int taps) {
    ResizeVector(decimators, numChannels);
    try {
        for (Downsampler*& decimator : decimators) decimator = Downsampler::Create(taps);
    } catch (...) {
        DeleteDecimators();
        throw;
    }
}

MultiDownsampler::~MultiDownsampler() { DeleteDecimators(); }

void MultiDownsampler::DeleteDecimators() noexcept {
    for (Downsampler* decimator : decimators) delete decimator;
}

void MultiDownsampler::Process(float** outs, const float** ins, unsigned int n) {
    for (unsigned long k = 0; k < decimators.Size(); ++k) decimators[k]->Process(outs[k], ins[k], n);
}

void MultiDownsampler::Clear() {
    for (Downsampler* decimator : decimators) decimator->Clear();
}

}  // namespace velmodsp
