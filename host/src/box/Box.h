#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "box/Preset.h"
#include "ext.h"

namespace velmohost {

class Host;

/// An object box in a patcher of its own. Main thread.
///
///     auto box = Box::Create(host, "tesk.fixnan~ @numchannels 2");
///     if (box) box->Send("mode givenvalue");
class Box {
public:
    /// Creates the object that `boxText` names, loading its plug-in if need be.
    /// @returns null after an error row when there is no such object or its constructor gives none
    static std::unique_ptr<Box> Create(Host& host, const std::string& boxText);
    /// Frees the object.
    ~Box();
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    /// Sends a message to the left inlet: a word with its arguments, or a number or list of numbers. What the object
    /// does not understand it says in the Max window.
    /// @returns whether the object understood it; false for an empty text too
    bool Send(const std::string& messageText);

    /// Has the object put its state into a preset, as the host's preset object does.
    /// @returns what it put in, nothing at all when it takes no part (an error row says so)
    std::optional<Preset> StorePreset();

    /// Sends the object what it, or another object of its class, has put into a preset. A line of another class is
    /// refused with an error row.
    /// @returns whether all of it was understood; false for an empty preset
    bool RecallPreset(const Preset& preset);

    /// The object's value as the host's pattr objects ask for it ("getvalueof"); nothing when it gives none (an error
    /// row says so).
    std::optional<std::vector<t_atom>> GetValueOf();

    /// Sets the object's value as the host's pattr objects do ("setvalueof").
    /// @returns whether the object took it, as far as it tells; otherwise an error row says that it has no value
    bool SetValueOf(std::vector<t_atom> value);

    t_object* Object() const { return object; }
    const std::string& ClassName() const { return className; }

    /// All inlets and outlets, and those of them that carry signals: the leftmost inlets, and the outlets of that type.
    unsigned NumInlets() const;
    unsigned NumSignalInlets() const;
    unsigned NumOutlets() const;
    unsigned NumSignalOutlets() const;

    /// The help text that the object gives for an inlet or outlet, counted from 0 at the left; empty when it has none.
    std::string InletAssist(unsigned inlet) const;
    std::string OutletAssist(unsigned outlet) const;

private:
    Box() = default;
    bool PostMissing(const char* message) const;
    std::string Assist(long side, unsigned index) const;

    std::string className;
    t_object* patcher = nullptr;    // what "#P" leads to
    t_object* boxObject = nullptr;  // what "#B" leads to
    t_object* object = nullptr;
};

}  // namespace velmohost
