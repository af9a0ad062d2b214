#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "VelmoHost.h"

#include "support/CapturedWindow.h"

using Rows = std::vector<std::string>;

/// The plug-in in the host, as patches use it.
class PluginFixture : public testing::Test {
protected:
    std::unique_ptr<velmohost::Box> Create(const std::string& arguments) {
        return velmohost::Box::Create(host, "tesk.fixnan~ " + arguments);
    }

    /// The rows that a message leads to.
    Rows Send(velmohost::Box& box, const std::string& message) {
        window.Take();
        box.Send(message);
        return window.Take();
    }

    /// Puts the samples into the inlets of a started chain (nothing into unconnected ones), one row of samples per
    /// inlet and one vector's length each, and returns the outlets' samples in the same form.
    static std::vector<std::vector<double>> Process(velmohost::DspChain& chain,
                                                    const std::vector<std::vector<double>>& ins) {
        for (unsigned channel = 0; channel < ins.size(); ++channel) {
            double* const inlet = chain.InletSamples(channel);
            if (inlet) std::copy(ins[channel].begin(), ins[channel].end(), inlet);
        }
        velmohost::AudioThread(chain).Perform(1);
        std::vector<std::vector<double>> outs;
        for (unsigned channel = 0; channel < ins.size(); ++channel) {
            const double* const outlet = chain.OutletSamples(channel);
            outs.emplace_back(outlet, outlet + ins[channel].size());
        }
        return outs;
    }

    velmotest::CapturedWindow window;
    velmohost::Host host{{VELMO_EXTERNALS_DIR}};
};
