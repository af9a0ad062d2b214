#pragma once

#include <deque>
#include <string>
#include <vector>

#include "velmomax.h"

#include "support/CapturedWindow.h"

using Rows = std::vector<std::string>;

/// An object with state and nothing else: class "keeper".
struct keeper_t {
    t_object ob;
    t_symbol* texts[4];  // of the documentation attributes
    float level;
    double list[2];
    t_symbol* name;
    long count;
};

/// What the attribute "odd" answers when it is read: a host error, or atoms.
struct OddAnswer {
    t_max_err error;
    std::vector<t_atom> atoms;
    long reportedCount = 0;  // in the stead of the number of atoms, when not 0
};

/// An object of the class, the Max window, and the faults of its attribute "odd". Its state is "count", "level", "list"
/// (two values) and "name"; "odd", the last one, has no value unless `odd` holds answers for its next readings.
struct Keeper {
    explicit Keeper(bool hasDumpOutlet = true);
    ~Keeper();

    /// Sends a message as a user does, and returns the rows that it leads to.
    Rows Send(const std::string& message);

    /// The state as "getvalueof" gives it, in text.
    std::string State();

    /// Gives the state "count", "level", "list" and "name" other values than those of a new object.
    void Change();

    velmotest::CapturedWindow window;
    keeper_t* const x;

    static inline std::deque<OddAnswer> odd;            // the next readings
    static inline t_max_err oddSetting = MAX_ERR_NONE;  // what every setting of "odd" gives
};
