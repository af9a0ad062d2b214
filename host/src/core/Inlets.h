#pragma once

#include "ext.h"

namespace velmohost {

struct InletRecord;

/// Lets the object know, within a scope, through which inlet a message reaches it.
class ScopedInlet {
public:
    /// @param index from 0 at the left
    ScopedInlet(t_object* x, unsigned index);
    ~ScopedInlet();
    ScopedInlet(const ScopedInlet&) = delete;
    ScopedInlet& operator=(const ScopedInlet&) = delete;

    /// Whether the object still lives: a message may free its receiver.
    bool OwnerLives() const { return owner != nullptr; }

    /// To be told of every object that is freed.
    static void ForgetOwner(const t_object* x);

    /// What the object receives for a selector: inlets for numbers put their own in the place of "int" and "float".
    t_symbol* Translate(t_symbol* selector) const;

private:
    t_object* owner;  // null once it is freed
    const long previous;
    InletRecord* const inlet;
    ScopedInlet* const outer;  // scopes nest like the messages they belong to
};

}  // namespace velmohost
