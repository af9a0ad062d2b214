// Plug-ins built with other headers share these records with the host, byte for byte, so every size and offset is
// checked: first the number on systems with 8-byte longs, then on Windows, where a long has 4 bytes.

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

#include <type_traits>

namespace {

constexpr std::size_t PerSystem(std::size_t longOf8, std::size_t longOf4) {
    return sizeof(long) == 8 ? longOf8 : longOf4;
}

}  // namespace

#define CHECK_SIZE(type, ...) static_assert(sizeof(type) == PerSystem(__VA_ARGS__))
#define CHECK_OFFSET(type, member, ...) static_assert(offsetof(type, member) == PerSystem(__VA_ARGS__))

CHECK_SIZE(long, 8, 4);
CHECK_SIZE(t_atom_long, 8, 8);
CHECK_SIZE(t_ptr_int, 8, 8);
CHECK_SIZE(t_ptr_uint, 8, 8);
CHECK_SIZE(t_ptr_size, 8, 8);
CHECK_SIZE(t_int, 8, 8);
CHECK_SIZE(t_max_err, 8, 8);
CHECK_SIZE(t_getbytes_size, 8, 8);
CHECK_SIZE(t_atom_float, 8, 8);
CHECK_SIZE(t_fourcc, 4, 4);
CHECK_SIZE(t_filepath, 2, 2);
CHECK_SIZE(t_bool, 1, 1);
CHECK_SIZE(t_refnum, 4, 2);
CHECK_SIZE(t_sample, 8, 8);
CHECK_SIZE(e_max_errorcodes, 4, 4);
CHECK_SIZE(e_max_atomtypes, 4, 4);
CHECK_SIZE(e_max_class_flags, 4, 4);
CHECK_SIZE(e_max_attrflags, 4, 4);

CHECK_SIZE(t_symbol, 16, 16);
CHECK_OFFSET(t_symbol, s_name, 0, 0);
CHECK_OFFSET(t_symbol, s_thing, 8, 8);

CHECK_SIZE(t_atom, 16, 16);
CHECK_SIZE(union word, 8, 8);
CHECK_OFFSET(t_atom, a_type, 0, 0);
CHECK_OFFSET(t_atom, a_w, 8, 8);
static_assert(std::is_same_v<decltype(t_atom::a_type), short>);

CHECK_SIZE(t_object, 32, 32);
CHECK_OFFSET(t_object, o_messlist, 0, 0);
CHECK_OFFSET(t_object, o_magic, 8, 8);
CHECK_OFFSET(t_object, o_inlet, 16, 16);
CHECK_OFFSET(t_object, o_outlet, 24, 24);

CHECK_SIZE(t_messlist, 24, 24);
CHECK_OFFSET(t_messlist, m_sym, 0, 0);
CHECK_OFFSET(t_messlist, m_fun, 8, 8);
CHECK_OFFSET(t_messlist, m_type, 16, 16);

CHECK_SIZE(t_class, 152, 144);
CHECK_OFFSET(t_class, c_sym, 0, 0);
CHECK_OFFSET(t_class, c_freelist, 8, 8);
CHECK_OFFSET(t_class, c_freefun, 16, 16);
CHECK_OFFSET(t_class, c_size, 24, 24);
CHECK_OFFSET(t_class, c_tiny, 32, 32);
CHECK_OFFSET(t_class, c_noinlet, 33, 33);
CHECK_OFFSET(t_class, c_filename, 40, 40);
CHECK_OFFSET(t_class, c_newmess, 48, 48);
CHECK_OFFSET(t_class, c_menufun, 56, 56);
CHECK_OFFSET(t_class, c_flags, 64, 64);
CHECK_OFFSET(t_class, c_messcount, 72, 68);
CHECK_OFFSET(t_class, c_messlist, 80, 72);
CHECK_OFFSET(t_class, c_attributes, 88, 80);
CHECK_OFFSET(t_class, c_extra, 96, 88);
CHECK_OFFSET(t_class, c_obexoffset, 104, 96);
CHECK_OFFSET(t_class, c_methods, 112, 104);
CHECK_OFFSET(t_class, c_attr_get, 120, 112);
CHECK_OFFSET(t_class, c_attr_gettarget, 128, 120);
CHECK_OFFSET(t_class, c_attr_getnames, 136, 128);
CHECK_OFFSET(t_class, c_superclass, 144, 136);

CHECK_SIZE(t_pxobject, 64, 56);
CHECK_OFFSET(t_pxobject, z_ob, 0, 0);
CHECK_OFFSET(t_pxobject, z_in, 32, 32);
CHECK_OFFSET(t_pxobject, z_proxy, 40, 40);
CHECK_OFFSET(t_pxobject, z_disabled, 48, 48);
CHECK_OFFSET(t_pxobject, z_count, 56, 52);
CHECK_OFFSET(t_pxobject, z_misc, 58, 54);

CHECK_SIZE(t_attr, 96, 96);
CHECK_OFFSET(t_attr, ob, 0, 0);
CHECK_OFFSET(t_attr, name, 32, 32);
CHECK_OFFSET(t_attr, type, 40, 40);
CHECK_OFFSET(t_attr, flags, 48, 48);
CHECK_OFFSET(t_attr, get, 56, 56);
CHECK_OFFSET(t_attr, set, 64, 64);
CHECK_OFFSET(t_attr, filterget, 72, 72);
CHECK_OFFSET(t_attr, filterset, 80, 80);
CHECK_OFFSET(t_attr, reserved, 88, 88);

CHECK_SIZE(t_atomarray, 56, 56);
CHECK_OFFSET(t_atomarray, ob, 0, 0);
CHECK_OFFSET(t_atomarray, ac, 32, 32);
CHECK_OFFSET(t_atomarray, av, 40, 40);
CHECK_OFFSET(t_atomarray, flags, 48, 48);

CHECK_SIZE(t_dictionary, 64, 64);
CHECK_OFFSET(t_dictionary, d_obj, 0, 0);
CHECK_OFFSET(t_dictionary, d_hashtab, 32, 32);
CHECK_OFFSET(t_dictionary, d_linklist, 40, 40);
CHECK_OFFSET(t_dictionary, d_mutex, 48, 48);
CHECK_OFFSET(t_dictionary, d_use_transaction, 56, 56);

CHECK_SIZE(t_dictionary_entry, 64, 64);
CHECK_OFFSET(t_dictionary_entry, e_obj, 0, 0);
CHECK_OFFSET(t_dictionary_entry, e_key, 32, 32);
CHECK_OFFSET(t_dictionary_entry, e_value, 40, 40);
CHECK_OFFSET(t_dictionary_entry, e_flags, 56, 56);

CHECK_SIZE(t_hashtab, 72, 64);
CHECK_OFFSET(t_hashtab, slotcount, 32, 32);
CHECK_OFFSET(t_hashtab, slots, 40, 40);
CHECK_OFFSET(t_hashtab, readonly, 48, 48);
CHECK_OFFSET(t_hashtab, flags, 56, 52);
CHECK_OFFSET(t_hashtab, reserved, 64, 56);

CHECK_SIZE(t_linklist, 120, 112);
CHECK_OFFSET(t_linklist, count, 32, 32);
CHECK_OFFSET(t_linklist, head, 40, 40);
CHECK_OFFSET(t_linklist, tail, 48, 48);

CHECK_SIZE(t_method_object, 56, 56);
CHECK_OFFSET(t_method_object, messlist_entry, 32, 32);

CHECK_SIZE(t_string, 48, 48);
CHECK_OFFSET(t_string, s_text, 32, 32);
CHECK_OFFSET(t_string, s_size, 40, 40);

CHECK_SIZE(t_fileinfo, 16, 16);
CHECK_OFFSET(t_fileinfo, type, 0, 0);
CHECK_OFFSET(t_fileinfo, creator, 4, 4);
CHECK_OFFSET(t_fileinfo, flags, 12, 12);

CHECK_SIZE(t_common_symbols_table, 11640, 11640);
CHECK_OFFSET(t_common_symbols_table, version, 0, 0);
CHECK_OFFSET(t_common_symbols_table, slots, 8, 8);
