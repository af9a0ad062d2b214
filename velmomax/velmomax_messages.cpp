#include "velmomax_messages.h"

#include <vector>

#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_dictionary.h"
#include "velmomax_documentation.h"
#include "velmomax_guard.h"
#include "velmomax_json.h"
#include "velmomax_state.h"
#include "velmomax_symbols.h"
#include "velmomax_text.h"
#include "velmomax_xml.h"

namespace velmomax {

namespace {

/// Adds a message that takes any arguments.
template <typename Handler>
void addMessage(t_class* c, Handler handler, const char* name, const char* description) {
    if (class_addmethod(c, AsMethod(handler), name, A_GIMME, 0)) post("error when adding method %s", name);
    class_doc_method(c, name, description);
}

}  // namespace

void AddCommonMethods(t_class* c) noexcept {
    class_addmethod(c, AsMethod(generatexml), "generatexml", 0);
    class_doc_method(c, "generatexml", "this method is for service use only.");

    class_addmethod(c, AsMethod(postversion), "version", 0);
    class_doc_method(c, "version", "post version of the object to the Max window.");

    addMessage(c, postattributes, "postattributes",
               "post the value of an attribute to Max window. <br/> if no attribute name is specified this post the "
               "value of all attributes.");
    class_doc_method_arg(c, "postattributes", "name of the attribute", "symbol");

    class_addmethod(c, AsMethod(velmomax_getvalueof), "getvalueof", A_CANT, 0);
    class_addmethod(c, AsMethod(velmomax_setvalueof), "setvalueof", A_CANT, 0);
    class_addmethod(c, AsMethod(velmomax_preset), "preset", 0);
    addMessage(c, velmomax_recallpreset, "recallpreset",
               "this method is provided for compatibility with the Max/MSP <m>preset</m> object. This method is called "
               "by the preset object when recalling a preset. This should not be used in any other situation.");

    addMessage(c, export_dict, "exportdict", "export current state as a JSON file.");
    addMessage(c, dump_dict, "dumpdict", "outputs current state as a dictionary (through the dump outlet).");
    // Users know this one by what it does, so it is documented under another name than the one that it answers to.
    class_addmethod(c, AsMethod(readdict), "dictionary", A_SYM, 0);
    class_doc_method(c, "readdict", "receives and parses a dictionary (of attributes).");
}

void generatexml(t_object* x) noexcept {
    GenerateXmlDocumentation(x, "./_c74_ref.xsl", MaxAttribute::Alphabetical, suiteNotice);
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
    Guarded(x, [&] {
        if (argc == 0) {
            PostValueOfAllAttributes(x);
        } else if (argc == 1 && argv->a_type == A_SYM) {
            PostValueOfAttribute(x, atom_getsym(argv));
        } else {
            post_error_message(x, argc, argv, "invalid message : postattributes");
        }
    });
}

void PostValueOfAllAttributes(t_object* x) {
    const std::vector<t_symbol*> names = GetStateAttributes(x);
    object_post(x, "found %d attributes", static_cast<int>(names.size()));
    for (t_symbol* name : names) PostValueOfAttribute(x, name);
}

void PostValueOfAttribute(t_object* x, t_symbol* name) {
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
