#pragma once

#include <functional>
#include <string>
#include <utility>

#include "dsp/VelmoDspFixNaNListener.h"
#include "text/VelmoDspString.h"

namespace velmodsp {

/// Does what a test wants when it hears of a bad sample, in the middle of a block.
struct NaNActor : FixNaNListener {
    explicit NaNActor(std::function<void(const std::string& channel)> whatToDo) : act(std::move(whatToDo)) {}
    void NaNOccured(const String& channelName) override { act(channelName.Str()); }
    const std::function<void(const std::string& channel)> act;
};

}  // namespace velmodsp
