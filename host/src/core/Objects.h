#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// An inlet as a patcher sees it.
struct InletInfo {
    std::string type;  ///< what it takes: "int", "float", …; empty for any message
};

/// An outlet as a patcher sees it.
struct OutletInfo {
    std::string type;  ///< what it sends: "signal", "int", …; empty for any message
    t_outlet* handle;
};

/// The inlets of an object from left to right, the one that every object has by itself included. Main thread.
std::vector<InletInfo> GetInlets(t_object* x);

/// The outlets of an object from left to right. Main thread.
std::vector<OutletInfo> GetOutlets(t_object* x);

/// Told of every message that leaves an outlet: `outletIndex` counts from 0 at the left; the atoms are the sender's.
using OutletListener = std::function<void(t_object* owner, t_outlet* outlet, unsigned outletIndex, t_symbol* selector,
                                          long ac, const t_atom* av)>;

/// Sends all that leaves outlets to `listener` from now on; an empty one lets it go nowhere. Main thread.
void SetOutletListener(OutletListener listener);

}  // namespace velmohost
