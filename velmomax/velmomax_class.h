/// Set-up of a class: its flags, its methods and its attributes. All functions run on the main thread while the
/// plug-in is loaded, between `class_new` and `class_register`.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// Makes the host hand creation arguments over as a dictionary. Right after `class_new`.
void AddClassFlagNewDictionary(t_class* c) noexcept;

/// Adds `m` as the class's "assist", which gives the help texts of inlets and outlets.
void AddAssistMethod(t_class* c, method m) noexcept;

/// Adds `m` under `name`, without arguments and without documentation. A refusal is posted in the Max window.
void AddMethodNoArgument(t_class* c, method m, const char* name) noexcept;

/// Declares an attribute of `type` whose value lives `offset` bytes into the object, read by the host's own getter and
/// written by `setter`, which has the host's shape `t_max_err (x, attribute, argc, argv)`.
void AddAttribute(t_class* c, const char* name, const char* type, method setter, long offset) noexcept;

/// Gives `attribute` a property of `type`. Blanks separate the text into several values.
void AddProperty(t_class* c, const char* attribute, const char* property, const char* type, const char* text) noexcept;

/// The same for a property of the attribute's own type: its default and its bounds.
void AddPropertyOfOwnType(t_class* c, const char* attribute, const char* property, const char* text) noexcept;

/// Gives `attribute` a property that is one symbol, blanks and all: labels and descriptions.
void AddTextProperty(t_class* c, const char* attribute, const char* property, const char* text) noexcept;

/// Declares one of the four documentation attributes ("classdigest" and its like). Users neither see nor set it; what
/// matters is its label, which holds `text`. `offset` is the place of its symbol field in the object.
void AddDocumentationAttribute(t_class* c, const char* name, long offset, const char* text) noexcept;

}  // namespace velmomax
