#include "ext_dictobj.h"

#include "ApiObjects.h"

namespace velmotest {
namespace {

int numFreed = 0;

/// An object that counts how many of its kind were freed.
t_object* NewCounted() {
    static t_class* const c =
        class_new("counted", nullptr, AsMethod(+[](t_object*) { ++numFreed; }), sizeof(t_object), nullptr, 0);
    return static_cast<t_object*>(object_alloc(c));
}

void AppendText(t_dictionary* d, const char* key, const std::string& text) {
    std::vector<t_atom> atoms = ParseAtoms(text);
    dictionary_appendatoms(d, gensym(key), static_cast<long>(atoms.size()), atoms.data());
}

class Dictionaries : public testing::Test {
protected:
    void SetUp() override { numFreed = 0; }
    Owned<t_dictionary> d{dictionary_new()};
};

TEST_F(Dictionaries, KeepTheOrderInWhichKeysWereAdded) {
    for (const char* key : {"zebra", "apple", "mango"}) dictionary_appendlong(d.get(), gensym(key), 1);
    AppendText(d.get(), "apple", "2 3");
    EXPECT_EQ(DictionaryText(d.get()), "zebra 1; apple 2 3; mango 1; ");
    dictionary_deleteentry(d.get(), gensym("zebra"));
    dictionary_appendlong(d.get(), gensym("zebra"), 4);
    EXPECT_EQ(DictionaryText(d.get()), "apple 2 3; mango 1; zebra 4; ");
    EXPECT_EQ(dictionary_getentrycount(d.get()), 3);
    dictionary_clear(d.get());
    EXPECT_EQ(DictionaryText(d.get()), "");
}

TEST_F(Dictionaries, GiveEachKindOfValueBack) {
    dictionary_appendlong(d.get(), gensym("long"), 1LL << 40);
    dictionary_appendfloat(d.get(), gensym("float"), 2.75);
    dictionary_appendsym(d.get(), gensym("sym"), gensym("s"));
    dictionary_appendstring(d.get(), gensym("string"), "a text");
    AppendText(d.get(), "single", "5");
    AppendText(d.get(), "list", "1 b");

    t_atom_long number = 0;
    t_symbol* symbol = nullptr;
    EXPECT_EQ(dictionary_getlong(d.get(), gensym("long"), &number), MAX_ERR_NONE);
    EXPECT_EQ(number, 1LL << 40);
    EXPECT_EQ(dictionary_getlong(d.get(), gensym("float"), &number), MAX_ERR_NONE);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(dictionary_getsym(d.get(), gensym("string"), &symbol), MAX_ERR_NONE);
    EXPECT_EQ(symbol, gensym("a text"));
    EXPECT_TRUE(dictionary_entryisstring(d.get(), gensym("string")));
    EXPECT_TRUE(dictionary_entryisatomarray(d.get(), gensym("list")));
    EXPECT_FALSE(dictionary_entryisatomarray(d.get(), gensym("single")));

    // Missing or of another kind: an error, and the result untouched.
    number = -1;
    EXPECT_NE(dictionary_getlong(d.get(), gensym("missing"), &number), MAX_ERR_NONE);
    EXPECT_NE(dictionary_getlong(d.get(), gensym("sym"), &number), MAX_ERR_NONE);
    EXPECT_EQ(number, -1);
    t_object* object = nullptr;
    EXPECT_NE(dictionary_getdictionary(d.get(), gensym("list"), &object), MAX_ERR_NONE);
    EXPECT_NE(dictionary_getobject(d.get(), gensym("long"), &object), MAX_ERR_NONE);
    EXPECT_EQ(object, nullptr);

    long ac = 0;
    t_atom* av = nullptr;
    ASSERT_EQ(dictionary_copyatoms(d.get(), gensym("list"), &ac, &av), MAX_ERR_NONE);
    dictionary_clear(d.get());
    EXPECT_EQ(AtomsToText(ac, av), "1 b");
    sysmem_freeptr(av);
}

TEST_F(Dictionaries, FreeTheObjectsTheyHold) {
    dictionary_appendobject(d.get(), gensym("a"), NewCounted());
    dictionary_appendobject(d.get(), gensym("b"), NewCounted());
    const Owned<t_object> kept(NewCounted());
    dictionary_appendobject(d.get(), gensym("c"), kept.get());
    dictionary_appendlong(d.get(), gensym("a"), 1);  // replaced
    EXPECT_EQ(numFreed, 1);
    dictionary_chuckentry(d.get(), gensym("c"));
    t_dictionary* const outer = dictionary_new();
    dictionary_appenddictionary(outer, gensym("inner"), &d.release()->d_obj);
    object_free(outer);
    EXPECT_EQ(numFreed, 2);
    EXPECT_EQ(object_isnogood(kept.get()), 0);
}

TEST_F(Dictionaries, CloneToTheLastLevel) {
    AppendText(d.get(), "list", "1 2");
    dictionary_appendstring(d.get(), gensym("string"), "text");
    t_dictionary* const outer = dictionary_new();
    dictionary_appenddictionary(outer, gensym("inner"), &d.release()->d_obj);
    const Owned<t_dictionary> copy(dictionary_clone(outer));
    object_free(outer);
    EXPECT_EQ(DictionaryText(copy.get()), "inner <dictionary>; ");
    t_object* found = nullptr;
    ASSERT_EQ(dictionary_getdictionary(copy.get(), gensym("inner"), &found), MAX_ERR_NONE);
    EXPECT_EQ(DictionaryText(reinterpret_cast<t_dictionary*>(found)), "list 1 2; string <string>; ");
}

TEST_F(Dictionaries, AreMadeByNameLikeOtherContainers) {
    const Owned<void> made(object_new(CLASS_NOBOX, gensym("dictionary")));
    EXPECT_EQ(object_classname(made.get()), gensym("dictionary"));
    std::vector<t_atom> atoms = ParseAtoms("1 2 3");
    const Owned<void> array(object_new_typed(gensym("nobox"), gensym("atomarray"), 2, atoms.data()));
    EXPECT_EQ(atomarray_getsize(static_cast<t_atomarray*>(array.get())), 2);
    EXPECT_EQ(object_new(CLASS_NOBOX, gensym("nonsense")), nullptr);
}

TEST_F(Dictionaries, HaveNamesAndLiveUntilTheLastReferenceIsReleased) {
    t_symbol* name = nullptr;
    ASSERT_EQ(dictobj_register(d.get(), &name), d.get());
    EXPECT_EQ(dictobj_namefromptr(d.get()), name);
    dictionary_appendlong(d.get(), gensym("x"), 3);
    dictionary_appendobject(d.get(), gensym("o"), NewCounted());

    // The name is taken: the newcomer is freed, its contents too.
    t_dictionary* const second = dictionary_new();
    dictionary_appendobject(second, gensym("a"), NewCounted());
    EXPECT_EQ(dictobj_register(second, &name), d.get());
    EXPECT_EQ(numFreed, 1);

    t_dictionary* const reference = dictobj_findregistered_retain(name);
    EXPECT_EQ(reference, d.get());
    dictobj_findregistered_retain(name);
    EXPECT_EQ(dictobj_release(reference), MAX_ERR_NONE);
    d.reset();
    EXPECT_TRUE(DictionaryText(reference).starts_with("x 3; "));
    EXPECT_EQ(dictobj_findregistered_retain(name), nullptr);
    EXPECT_EQ(dictobj_findregistered_clone(name), nullptr);
    dictobj_release(reference);
    EXPECT_EQ(numFreed, 2);
}

TEST(AtomArrays, HoldCopiesAndFreeObjectsOnlyWhenAsked) {
    numFreed = 0;
    std::vector<t_atom> atoms = ParseAtoms("1 b 2.5");
    Owned<t_atomarray> array(atomarray_new(3, atoms.data()));
    atoms.clear();
    long ac = 0;
    t_atom* av = nullptr;
    atomarray_getatoms(array.get(), &ac, &av);
    atomarray_appendatoms(array.get(), ac, av);  // its own atoms
    atomarray_chuckindex(array.get(), 1);
    atomarray_getatoms(array.get(), &ac, &av);
    EXPECT_EQ(AtomsToText(ac, av), "1 2.5 1 b 2.5");
    t_atom atom;
    EXPECT_EQ(atomarray_getindex(array.get(), 3, &atom), MAX_ERR_NONE);
    EXPECT_EQ(atom_getsym(&atom), gensym("b"));
    EXPECT_NE(atomarray_getindex(array.get(), 5, &atom), MAX_ERR_NONE);

    atom_setobj(&atom, NewCounted());
    atomarray_setatoms(array.get(), 1, &atom);
    atomarray_clear(array.get());
    EXPECT_EQ(numFreed, 0);
    atomarray_flags(array.get(), ATOMARRAY_FLAG_FREECHILDREN);
    atomarray_appendatom(array.get(), &atom);
    array.reset();
    EXPECT_EQ(numFreed, 1);
}

TEST(Binbufs, StoreMessagesWithTheirEnds) {
    const Owned<void> binbuf(binbuf_new());
    std::vector<t_atom> atoms = ParseAtoms("#1 2 #0 #12 x");
    binbuf_insert(binbuf.get(), gensym("set"), 5, atoms.data());
    binbuf_insert(binbuf.get(), nullptr, 1, atoms.data() + 1);
    std::vector<t_atom> stored;
    long unused = 0, position = 0;
    t_atom atom;
    while (binbuf_getatom(binbuf.get(), &unused, &position, &atom) == 0) stored.push_back(atom);
    EXPECT_EQ(AtomsToText(static_cast<long>(stored.size()), stored.data()), "set $1 2 #0 #12 x ; 2 ;");
}

}  // namespace
}  // namespace velmotest
