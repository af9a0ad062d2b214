#include "core/Creation.h"

#include <limits>
#include <string>

#include "core/AtomText.h"
#include "core/Attribute.h"
#include "core/AttributeRuns.h"
#include "core/ClassRecord.h"
#include "core/Classes.h"
#include "core/Construction.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "core/TypedArguments.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

/// Puts an attribute's default under its name, if it has one.
void AppendDefault(t_dictionary* d, Attribute& attribute) {
    for (const char* property : {"default", "defaultname"}) {
        long ac = 0;
        t_atom* av = nullptr;
        const bool found = object_attr_getvalueof(&attribute, gensym(property), &ac, &av) == MAX_ERR_NONE && ac > 0;
        if (found) dictionary_appendatoms(d, attribute.attr.name, ac, av);
        sysmem_freeptr(av);
        if (found) return;
    }
}

/// Puts what the user set under the attribute's name. Names that no attribute has go in as well: the object itself
/// complains of them when it checks its dictionary.
void AppendSetting(t_dictionary* d, t_class* c, const AttributeRun& run) {
    const Attribute* const attribute = FindClassAttribute(c, run.name);
    const std::string name = '"' + std::string(run.name->s_name) + '"';
    if (attribute != nullptr && (attribute->attr.flags & (ATTR_SET_OPAQUE | ATTR_SET_OPAQUE_USER)) != 0) {
        PostRow(RowKind::Error, c->c_sym->s_name, ("attribute " + name + " can not be set").c_str());
    } else if (run.count == 0) {
        PostRow(RowKind::Warning, c->c_sym->s_name, ("no value for attribute " + name).c_str());
    } else {
        dictionary_appendatoms(d, run.name, run.count, run.values);
    }
}

OwnedRecord<t_dictionary> BuildArgumentDictionary(t_class* c, long ac, t_atom* av) {
    OwnedRecord<t_dictionary> d(dictionary_new());
    if (d == nullptr) throw std::bad_alloc();
    for (t_object* attribute : GetClassAttributes(c)) AppendDefault(d.get(), *AsAttribute(attribute));
    for (const AttributeRun& run : FindRuns(ac, av)) AppendSetting(d.get(), c, run);
    return d;
}

/// A class that takes a dictionary has no place for arguments without a name.
void WarnOfPositionalArguments(t_class* c, long ac, const t_atom* av) {
    const long count = FindFirstRun(ac, av);
    if (count == 0) return;
    const std::string text = "extra arguments are ignored: " + AtomsToText(count, av);
    PostRow(RowKind::Warning, c->c_sym->s_name, text.c_str());
}

t_object* ConstructWithDictionary(t_class* c, t_symbol* name, long ac, t_atom* av) {
    WarnOfPositionalArguments(c, ac, av);
    const OwnedRecord<t_dictionary> d = BuildArgumentDictionary(c, ac, av);
    t_atom argument;
    atom_setobj(&argument, d.get());
    return Construct(c, name, 1, &argument);
}

/// A constructor with a list of types takes what stands before the first "@"; the settings are applied afterwards.
t_object* ConstructWithTypes(t_class* c, t_symbol* name, long ac, t_atom* av) {
    const long count = FindFirstRun(ac, av);
    t_object* const x = Construct(c, name, count, av);
    if (x != nullptr) attr_args_process(x, static_cast<short>(ac - count), av + count);
    return x;
}

t_object* ConstructForBox(t_class* c, t_symbol* name, long ac, t_atom* av) {
    if ((c->c_flags & CLASS_FLAG_NEWDICTIONARY) != 0) return ConstructWithDictionary(c, name, ac, av);
    return TakesAtoms(c->c_newmess->m_type) ? Construct(c, name, ac, av) : ConstructWithTypes(c, name, ac, av);
}

}  // namespace

ScopedBoxContext::ScopedBoxContext(t_object* patcher, t_object* box)
    : previousPatcher(gensym("#P")->s_thing), previousBox(gensym("#B")->s_thing) {
    gensym("#P")->s_thing = patcher;
    gensym("#B")->s_thing = box;
}

ScopedBoxContext::~ScopedBoxContext() {
    gensym("#P")->s_thing = previousPatcher;
    gensym("#B")->s_thing = previousBox;
}

t_object* CreateInstance(t_class* c, t_symbol* name, long ac, t_atom* av, t_object* box, t_object* patcher) {
    if (c == nullptr || ac < 0 || (ac > 0 && av == nullptr)) return nullptr;
    if (ac > std::numeric_limits<short>::max()) {
        PostRow(RowKind::Error, c->c_sym->s_name, "too many arguments for the object");
        return nullptr;
    }
    const ScopedBoxContext context(patcher, box);
    t_object* const x = ConstructForBox(c, name != nullptr ? name : c->c_sym, ac, av);
    if (x == nullptr) PostRow(RowKind::Error, c->c_sym->s_name, "the object could not be created");
    return x;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_dictionary* object_dictionaryarg(long ac, t_atom* av) {
    return ac > 0 && av != nullptr && atomisdictionary(av) ? static_cast<t_dictionary*>(atom_getobj(av)) : nullptr;
}

t_dictionary* object_dictionary_fromnewargs(t_object*, t_class* c, long argc, t_atom* argv, long, char* freedict) try {
    t_dictionary* const given = object_dictionaryarg(argc, argv);
    if (freedict != nullptr) *freedict = given == nullptr ? 1 : 0;
    if (given != nullptr || c == nullptr) return given;
    return BuildArgumentDictionary(c, argv != nullptr ? argc : 0, argv).release();
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void* newinstance(const t_symbol* s, short argc, const t_atom* argv) try {
    t_symbol* const name = const_cast<t_symbol*>(s);
    t_class* const c = FindClass(CLASS_BOX, name);
    std::vector<t_atom> atoms(argv, argv + argc);
    return c != nullptr ? CreateInstance(c, name, argc, atoms.data(), nullptr, gensym("#P")->s_thing) : nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
