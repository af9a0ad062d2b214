#include "dsp/VelmoDspMultiFixNaN.h"

#include <algorithm>
#include <exception>

namespace velmodsp {

MultiFixNaN::MultiFixNaN(unsigned int numberOfChannels)
    : SignalProcessing(numberOfChannels, numberOfChannels), numChannels(numberOfChannels) {
    AllowInPlace();
    ResizeVector(channels, numChannels);
    try {
        for (unsigned int k = 0; k < numChannels; ++k) {
            channels[k] = new FixNaN;
            channels[k]->SetName(String("Channel #") + (k + 1));
        }
    } catch (...) {
        DeleteChannels();
        throw;
    }
}

MultiFixNaN::~MultiFixNaN() { DeleteChannels(); }

void MultiFixNaN::DeleteChannels() noexcept {
    for (FixNaN* channel : channels) delete channel;
}

void MultiFixNaN::Process(float** outs, const float** ins, unsigned long n) {
    try {
        for (unsigned int k = 0; k < numChannels; ++k) {
            if (IsInletConnected(k)) {
                channels[k]->Process(outs[k], ins[k], n);
            } else {
                std::fill_n(outs[k], n, 0.0f);
            }
        }
    } catch (...) {
        std::terminate();
    }
}

void MultiFixNaN::Reset() noexcept {
    for (FixNaN* channel : channels) channel->Rearm();
}

void MultiFixNaN::AddListener(FixNaNListener* listener) {
    for (FixNaN* channel : channels) channel->AddListener(listener);
}

void MultiFixNaN::RemoveListener(FixNaNListener* listener) {
    for (FixNaN* channel : channels) channel->RemoveListener(listener);
}

void MultiFixNaN::SetReplacementValue(float value) noexcept {
    for (FixNaN* channel : channels) channel->SetReplacementValue(value);
}

void MultiFixNaN::SetMode(const String& text) {
    for (FixNaN* channel : channels) channel->SetMode(text);
}

}  // namespace velmodsp
