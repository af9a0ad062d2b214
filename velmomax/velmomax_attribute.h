/// Reading attributes back: their properties (attributes of the attribute), their order, and which of them make up an
/// object's state. Everything here runs on the main thread. Problems are posted in the Max window without an object,
/// and the answer is then neutral; nothing is thrown but std::bad_alloc, by what gives texts and lists.
///
/// Properties that mean something to the suite:
///   label, description  short and long text       category, style  the inspector's group and editor
///   enumvals            an enumeration's choices  invisible        1 hides the attribute from lists and state
///   order               place in a list sorted by order            default, minvalue, maxvalue, dontreset
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "velmomax_api.h"

namespace velmomax {

/// One attribute of an object, or nothing when the object has no attribute of that name. The object owns the attribute
/// and must outlive this.
class MaxAttribute {
public:
    /// How a list of attributes is sorted.
    enum AttrSortingType : int {
        HostOrder = 0,     ///< as the host lists them
        Alphabetical = 1,  ///< by name
        ByOrder = 2,       ///< by the property "order"; attributes without one come last, in no certain order
    };

    MaxAttribute(void* object, t_symbol* name) noexcept;

    /// True when the object has no such attribute.
    bool IsNull() const noexcept { return attribute == nullptr; }

    /// The attribute's name; the empty symbol when there is no attribute.
    t_symbol* GetName() const noexcept;

    /// The property's first value as text: a symbol's name, a long in decimal, a float with two decimals (ties away
    /// from zero). `defaultText` when there is no such property or it holds nothing.
    std::string GetValueOf(t_symbol* property, const std::string& defaultText) const;

    /// The property "label" as `GetValueOf` gives it.
    std::string GetLabel(const std::string& defaultText) const;

    /// The property "order"; 0 when absent.
    unsigned int GetOrder() const noexcept;

    /// Makes `choices` the values of the property "enumvals", one entry each; an entry that is no symbol stays empty.
    /// Without the property there is one choice, `defaultText`.
    void GetEnumChoices(std::vector<std::string>& choices, const std::string& defaultText) const;

    /// True when the property "invisible" is 1.
    bool IsInvisible() const noexcept;

    /// Writes the attribute's element of the reference page, indented by two tabs and more. Texts are written as they
    /// are, since they may carry the page's own markup. Nothing is written for a null attribute.
    void Print(std::ostream& stream) const;

    /// Makes `names` the names of all attributes of `object`.
    static void GetListOfAttributesName(void* object, std::vector<t_symbol*>& names, AttrSortingType sortingType);

    /// Leaves in `names`, in their order, the attributes that are the object's state: visible, open to users for
    /// reading and setting, none of the box's own, and with a value.
    static void RemoveInvisibleAndOpaqueAttributes(void* object, std::vector<t_symbol*>& names);

    /// Number of atoms of the attribute's current value; 0, reported as a bug of `object`, when it cannot be read.
    static long GetNumberOfAtomsNeededToStoreAttribute(void* object, t_symbol* name) noexcept;

private:
    bool hasProperty(t_symbol* property) const noexcept;
    long flags() const noexcept;
    bool isReadable() const noexcept;
    bool isSettable() const noexcept;
    const char* typeName() const noexcept;
    void printProperty(std::ostream& stream, t_symbol* property) const;
    std::string enumChoicesText() const;

    t_object* attribute;
};

/// The order of two `MaxAttribute`s to which `a` and `b` point, in the manner of `qsort`: by the property "order". An
/// attribute without an order compares greater than everything, whichever side it stands on, so this sorts by `qsort`
/// only among attributes that have one.
int compareAttributeOrder(const void* a, const void* b) noexcept;

/// The name of an attribute object.
t_symbol* get_attr_name(void* attribute) noexcept;

}  // namespace velmomax
