#include "velmomax_messages.h"

#include <vector>

#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_documentation.h"
#include "velmomax_symbols.h"
#include "velmomax_text.h"

namespace velmomax {

void AddCommonMethods(t_class* c) noexcept {
    class_addmethod(c, AsMethod(postversion), "version", 0);
    class_doc_method(c, "version", "post version of the object to the Max window.");

    if (class_addmethod(c, AsMethod(postattributes), "postattributes", A_GIMME, 0)) {
        post("error when adding method %s", "postattributes");
    }
    class_doc_method(c, "postattributes",
                     "post the value of an attribute to Max window. <br/> if no attribute name is specified this post "
                     "the value of all attributes.");
    class_doc_method_arg(c, "postattributes", "name of the attribute", "symbol");
}

void postversion(t_object* x) noexcept {
    void* version = object_attr_get(x, gensym("externalversion"));
    if (!version) {
        object_error(x, "Couldnt get external version");
        return;
    }
    const AttributeValue label(version, CommonSymbol(SlotOf("label")));
    if (label.Count() > 0 && label[0].a_type == A_SYM) {
        object_post(x, "Version %s", atom_getsym(&label[0])->s_name);
    } else {
        object_post(x, "unknown version");
    }
}

void postattributes(t_object* x, t_symbol*, long argc, t_atom* argv) noexcept {
    if (argc == 0) {
        PostValueOfAllAttributes(x);
    } else if (argc == 1 && argv->a_type == A_SYM) {
        PostValueOfAttribute(x, atom_getsym(argv));
    } else {
        post_error_message(x, argc, argv, "invalid message : postattributes");
    }
}

void PostValueOfAllAttributes(t_object* x) noexcept {
    std::vector<t_symbol*> names;
    MaxAttribute::GetListOfAttributesName(x, names, MaxAttribute::Alphabetical);
    MaxAttribute::RemoveInvisibleAndOpaqueAttributes(x, names);
    object_post(x, "found %d attributes", static_cast<int>(names.size()));
    for (t_symbol* name : names) PostValueOfAttribute(x, name);
}

void PostValueOfAttribute(t_object* x, t_symbol* name) noexcept {
    if (MaxAttribute(x, name).IsNull()) {
        object_error(x, "no attribute %s", name->s_name);
        return;
    }
    const AttributeValue value(x, name);
    if (value.Error() != MAX_ERR_NONE) {
        object_bug(x, "PostValueOfAttribute : %s in object_attr_getvalueof (%s)", GetErrorName(value.Error()),
                   name->s_name);
    } else if (value.Count() > 0) {
        post_message(x, value.Count(), value.Atoms(), name->s_name);
    }
}

}  // namespace velmomax
