#include "velmomax_class.h"

namespace velmomax {

void AddClassFlagNewDictionary(t_class* c) noexcept { c->c_flags |= CLASS_FLAG_NEWDICTIONARY; }

void AddAssistMethod(t_class* c, method m) noexcept { class_addmethod(c, m, "assist", A_CANT, 0); }

void AddMethodNoArgument(t_class* c, method m, const char* name) noexcept {
    if (class_addmethod(c, m, name, 0)) post("error when adding method %s", name);
}

void AddAttribute(t_class* c, const char* name, const char* type, method setter, long offset) noexcept {
    t_object* attribute = attr_offset_new(name, gensym(type), 0, nullptr, nullptr, offset);
    class_addattr(c, attribute);
    object_method(attribute, gensym("setmethod"), gensym("get"), nullptr);
    object_method(attribute, gensym("setmethod"), gensym("set"), setter);
}

void AddProperty(t_class* c, const char* attribute, const char* property, const char* type, const char* text) noexcept {
    class_attr_addattr_parse(c, attribute, property, gensym(type), 0, text);
}

void AddPropertyOfOwnType(t_class* c, const char* attribute, const char* property, const char* text) noexcept {
    auto* type = static_cast<t_symbol*>(object_method(class_attr_get(c, gensym(attribute)), gensym("gettype")));
    class_attr_addattr_parse(c, attribute, property, type, 0, text);
}

void AddTextProperty(t_class* c, const char* attribute, const char* property, const char* text) noexcept {
    class_attr_addattr_format(c, attribute, property, gensym("symbol"), 0, "s", gensym(text));
}

void AddDocumentationAttribute(t_class* c, const char* name, long offset, const char* text) noexcept {
    constexpr long hiddenFromUsers = ATTR_GET_OPAQUE_USER | ATTR_SET_OPAQUE_USER;
    class_addattr(c, attr_offset_new(name, gensym("symbol"), hiddenFromUsers, nullptr, nullptr, offset));
    AddProperty(c, name, "invisible", "long", "1");
    AddTextProperty(c, name, "label", text);
    AddTextProperty(c, name, "category", "documentation");
}

}  // namespace velmomax
