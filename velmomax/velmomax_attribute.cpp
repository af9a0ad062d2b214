#include "velmomax_attribute.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <type_traits>

#include "velmomax_atoms.h"
#include "velmomax_guard.h"
#include "velmomax_symbols.h"
#include "velmomax_text.h"

namespace velmomax {

namespace {

/// Attributes that the host gives to boxes: where they lie, how they look, what they tell. They belong to the patch and
/// not to the object's state.
constexpr std::array<const char*, 14> boxAttributes{
    "annotation", "background",  "color",         "fontface",     "fontname",          "fontsize",  "hidden",
    "hint",       "ignoreclick", "patching_rect", "presentation", "presentation_rect", "textcolor", "varname"};

bool isBoxAttribute(const t_symbol* name) {
    return std::any_of(boxAttributes.begin(), boxAttributes.end(),
                       [name](const char* boxAttribute) { return name == gensym(boxAttribute); });
}

/// The value with two decimals. C libraries differ in how they print exact ties (0.125), so ties are settled first.
std::string twoDecimals(double value) {
    const double narrowed = static_cast<double>(static_cast<float>(value));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.2f", std::round(narrowed * 100.0) / 100.0);
    return text.data();
}

const char* flagText(bool flag) { return flag ? "1" : "0"; }

t_symbol* label() { return CommonSymbol(SlotOf("label")); }

void listNames(void* object, std::vector<t_symbol*>& names, bool alphabetically) {
    long count = 0;
    t_symbol** hostNames = nullptr;
    ThrowIfOutOfMemory(object_attr_getnames(object, &count, &hostNames));
    const OwnedMemory<t_symbol*> owner(hostNames);
    if (hostNames && count > 0) {
        if (alphabetically) symbolarray_sort(count, hostNames);
        names.assign(hostNames, hostNames + count);
    }
}

void sortByOrder(void* object, std::vector<t_symbol*>& names) {
    std::vector<t_symbol*> unordered;
    std::vector<MaxAttribute> ordered;
    for (t_symbol* name : names) {
        const MaxAttribute attribute(object, name);
        if (attribute.GetOrder() == 0) {
            unordered.push_back(name);
        } else {
            ordered.push_back(attribute);
        }
    }
    // Attributes without an order stay out of the sort: no two of them compare consistently, which would leave the
    // result, and even qsort's reach in memory, to the C library.
    static_assert(std::is_trivially_copyable_v<MaxAttribute>, "qsort moves the attributes as bytes");
    if (!ordered.empty()) std::qsort(ordered.data(), ordered.size(), sizeof(MaxAttribute), compareAttributeOrder);

    names.clear();
    for (const MaxAttribute& attribute : ordered) names.push_back(attribute.GetName());
    names.insert(names.end(), unordered.begin(), unordered.end());
}

}  // namespace

MaxAttribute::MaxAttribute(void* object, t_symbol* name) noexcept
    : attribute(static_cast<t_object*>(object_attr_get(object, name))) {}

t_symbol* MaxAttribute::GetName() const noexcept { return attribute ? get_attr_name(attribute) : gensym(""); }

std::string MaxAttribute::GetValueOf(t_symbol* property, const std::string& defaultText) const {
    if (!attribute) return defaultText;
    const AttributeValue value(attribute, property);
    ThrowIfOutOfMemory(value.Error());
    if (value.Count() == 0) return defaultText;
    switch (value[0].a_type) {
        case A_SYM:
            return atom_getsym(&value[0])->s_name;
        case A_LONG:
            return long2string(static_cast<long>(atom_getlong(&value[0])));
        case A_FLOAT:
            return twoDecimals(atom_getfloat(&value[0]));
        default:
            post("MaxAttribute::GetValueOf : %s (%s): unhandled atom type ?", GetName()->s_name, property->s_name);
            return defaultText;
    }
}

std::string MaxAttribute::GetLabel(const std::string& defaultText) const { return GetValueOf(label(), defaultText); }

unsigned int MaxAttribute::GetOrder() const noexcept {
    if (!hasProperty(CommonSymbol(SlotOf("order")))) return 0;
    const AttributeValue value(attribute, CommonSymbol(SlotOf("order")));
    if (value.Error() != MAX_ERR_NONE) post("Error in MaxAttribute::GetOrder : %s", GetErrorName(value.Error()));
    if (value.Count() == 0) return 0;
    if (value[0].a_type != A_LONG) {
        post("bug ? order attribute is supposed to be of type long for %s", GetName()->s_name);
        return 0;
    }
    return static_cast<unsigned int>(atom_getlong(&value[0]));
}

void MaxAttribute::GetEnumChoices(std::vector<std::string>& choices, const std::string& defaultText) const {
    choices.assign(1, defaultText);
    if (!hasProperty(CommonSymbol(SlotOf("enumvals")))) return;
    const AttributeValue value(attribute, CommonSymbol(SlotOf("enumvals")));
    ThrowIfOutOfMemory(value.Error());
    if (value.Error() != MAX_ERR_NONE) {
        post("MaxAttribute::GetEnumChoices : %s in object_attr_getvalueof", GetErrorName(value.Error()));
    }
    if (value.Count() == 0) return;
    choices.assign(static_cast<std::size_t>(value.Count()), std::string());
    for (long i = 0; i < value.Count(); ++i) {
        if (value[i].a_type == A_SYM) {
            choices[static_cast<std::size_t>(i)] = atom_getsym(&value[i])->s_name;
        } else {
            post("enumvals attribute with an atom that is not a symbol ??");
        }
    }
}

bool MaxAttribute::IsInvisible() const noexcept {
    if (!hasProperty(CommonSymbol(SlotOf("invisible")))) return false;
    const AttributeValue value(attribute, CommonSymbol(SlotOf("invisible")));
    if (value.Error() != MAX_ERR_NONE) {
        post("MaxAttribute::IsInvisible : %s in object_attr_getvalueof", GetErrorName(value.Error()));
    }
    if (value.Count() == 0) return false;
    if (value[0].a_type != A_LONG) {
        post("error attribute invisible not typed long ??");
        return false;
    }
    return atom_getlong(&value[0]) == 1;
}

void MaxAttribute::Print(std::ostream& stream) const {
    if (!attribute) return;
    const std::string labelText = GetLabel("");
    const std::string description = GetValueOf(CommonSymbol(SlotOf("description")), labelText);
    stream << "\t\t<attribute name=\"" << GetName()->s_name << "\" get=\"" << flagText(isReadable()) << "\" set=\""
           << flagText(isSettable()) << "\" type=\"" << typeName() << "\" size=\"1\">\n"
           << "\t\t\t<digest>" << labelText << "</digest>\n"
           << "\t\t\t<description>" << description << "</description>\n"
           << "\t\t\t<attributelist>\n";
    std::vector<t_symbol*> properties;
    listNames(attribute, properties, true);
    for (t_symbol* property : properties) {
        const bool isShownAbove =
            property == CommonSymbol(SlotOf("description")) || property == CommonSymbol(SlotOf("digest"));
        if (!isShownAbove) printProperty(stream, property);
    }
    stream << "\t\t\t</attributelist>\n\t\t</attribute>\n";
}

void MaxAttribute::printProperty(std::ostream& stream, t_symbol* property) const {
    const MaxAttribute description(attribute, property);
    std::string value;
    if (property == CommonSymbol(SlotOf("enumvals"))) {
        value = enumChoicesText();
        std::cerr << "value = |" << value << "|" << std::endl;
    } else {
        value = GetValueOf(property, "");
        removeTrailingSpaces(value);
    }
    stream << "\t\t\t\t<attribute name=\"" << property->s_name << "\" get=\"" << flagText(description.isReadable())
           << "\" set=\"" << flagText(description.isSettable()) << "\" type=\"" << description.typeName()
           << "\" value=\"" << value << "\" />\n";
}

std::string MaxAttribute::enumChoicesText() const {
    std::vector<std::string> choices;
    GetEnumChoices(choices, "");
    std::string text;
    for (const std::string& choice : choices) text += choice + " ";
    removeTrailingSpaces(text);
    return text;
}

void MaxAttribute::GetListOfAttributesName(void* object, std::vector<t_symbol*>& names, AttrSortingType sortingType) {
    names.clear();
    listNames(object, names, sortingType == Alphabetical);
    if (sortingType == ByOrder) sortByOrder(object, names);
}

void MaxAttribute::RemoveInvisibleAndOpaqueAttributes(void* object, std::vector<t_symbol*>& names) {
    std::erase_if(names, [object](t_symbol* name) {
        const MaxAttribute candidate(object, name);
        return candidate.IsInvisible() || !candidate.isReadable() || !candidate.isSettable() || isBoxAttribute(name) ||
               GetNumberOfAtomsNeededToStoreAttribute(object, name) == 0;
    });
}

long MaxAttribute::GetNumberOfAtomsNeededToStoreAttribute(void* object, t_symbol* name) noexcept {
    const AttributeValue value(object, name);
    auto* owner = static_cast<t_object*>(object);
    if (value.Error() != MAX_ERR_NONE) {
        object_bug(owner, "GetNumberOfAtomsNeededToStoreAttribute : %s in object_attr_getvalueof (%s)",
                   GetErrorName(value.Error()), name->s_name);
    } else if (value.ReportedCount() < 0) {
        object_bug(owner, "GetNumberOfAtomsNeededToStoreAttribute : error in object_attr_getvalueof %s (ac=%ld)",
                   name->s_name, value.ReportedCount());
    }
    return value.Count();
}

bool MaxAttribute::hasProperty(t_symbol* property) const noexcept {
    return attribute && object_attr_get(attribute, property);
}

long MaxAttribute::flags() const noexcept {
    return static_cast<long>(reinterpret_cast<t_ptr_int>(object_method(attribute, gensym("getflags"))));
}

bool MaxAttribute::isReadable() const noexcept { return attribute && !(flags() & ATTR_GET_OPAQUE_USER); }

bool MaxAttribute::isSettable() const noexcept { return attribute && !(flags() & ATTR_SET_OPAQUE_USER); }

const char* MaxAttribute::typeName() const noexcept {
    const auto* type = attribute ? static_cast<t_symbol*>(object_method(attribute, gensym("gettype"))) : nullptr;
    if (type == CommonSymbol(SlotOf("long"))) return "int";
    if (type == CommonSymbol(SlotOf("float")) || type == CommonSymbol(SlotOf("float64"))) return "float";
    if (type == CommonSymbol(SlotOf("symbol"))) return "symbol";
    return "unknown";
}

int compareAttributeOrder(const void* a, const void* b) noexcept {
    const std::uint32_t orderOfA = static_cast<const MaxAttribute*>(a)->GetOrder();
    const std::uint32_t orderOfB = static_cast<const MaxAttribute*>(b)->GetOrder();
    if (orderOfA - 1u >= orderOfB) return 1;
    return orderOfA < orderOfB ? -1 : 0;
}

t_symbol* get_attr_name(void* attribute) noexcept {
    return static_cast<t_symbol*>(object_method(attribute, gensym("getname")));
}

}  // namespace velmomax
