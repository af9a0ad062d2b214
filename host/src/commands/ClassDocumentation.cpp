#include "commands/ClassDocumentation.h"

#include "core/AtomText.h"
#include "ext_obex.h"

namespace velmohost {

std::string PlainText(long ac, const t_atom* av) {
    if (ac == 1 && av->a_type == A_SYM) return atom_getsym(av)->s_name;
    return AtomsToText(ac, av);
}

namespace {

t_dictionary* GetMethodDictionary(t_class* c) {
    void* const attribute = class_attr_get(c, gensym("classdescription"));
    if (attribute == nullptr || object_attr_get(attribute, gensym("methods")) == nullptr) return nullptr;
    return reinterpret_cast<t_dictionary*>(object_attr_getobj(attribute, gensym("methods")));
}

std::string TextAt(const t_atom* atoms, long index) { return PlainText(1, atoms + index); }

}  // namespace

std::vector<t_atom> GetPropertyAtoms(t_object* attribute, const char* property) {
    t_symbol* const name = gensym(property);
    long ac = 0;
    t_atom* av = nullptr;
    if (object_attr_get(attribute, name) == nullptr) return {};
    if (object_attr_getvalueof(attribute, name, &ac, &av) != MAX_ERR_NONE) return {};
    std::vector<t_atom> atoms(av, av + ac);
    sysmem_freeptr(av);
    return atoms;
}

std::string GetProperty(t_object* attribute, const char* property) {
    const std::vector<t_atom> atoms = GetPropertyAtoms(attribute, property);
    return PlainText(static_cast<long>(atoms.size()), atoms.data());
}

std::string GetClassProperty(t_class* c, const char* attribute, const char* property) {
    auto* const object = static_cast<t_object*>(class_attr_get(c, gensym(attribute)));
    return object != nullptr ? GetProperty(object, property) : "";
}

MessageDocumentation GetMessageDocumentation(t_class* c, const std::string& message) {
    MessageDocumentation documentation;
    t_dictionary* const methods = GetMethodDictionary(c);
    long ac = 0;
    t_atom* av = nullptr;
    if (methods == nullptr || dictionary_getatoms(methods, gensym(message.c_str()), &ac, &av) != MAX_ERR_NONE) {
        return documentation;
    }
    if (ac > 0) documentation.description = TextAt(av, 0);
    for (long index = 2; index + 1 < ac; index += 2) {
        documentation.arguments.push_back({TextAt(av, index), TextAt(av, index + 1)});
    }
    return documentation;
}

}  // namespace velmohost
