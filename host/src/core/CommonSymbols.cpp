// The table of common symbols. Plug-ins read its slots by number; those whose names the host does not use itself hold
// symbols that equal no message, so that a comparison with one of them fails and none is null.

#include <string>

#include "ext.h"

namespace velmohost {
namespace {

constexpr long tableVersion = 500;

/// Macros name the slots, so each name is told in one place only.
#define INTERN(name) _sym_##name = gensym(#name)

t_common_symbols_table* FillTable() {
    static t_common_symbols_table table;
    _common_symbols = &table;
    table.version = tableVersion;
    for (int slot = 1; slot <= MAX_COMMON_SYMBOL_COUNT; ++slot) {
        MAX_COMMON_SYMBOL(slot) = gensym(("__common_symbol_" + std::to_string(slot)).c_str());
    }
    INTERN(_preset);
    INTERN(annotation);
    INTERN(anything);
    INTERN(append);
    INTERN(atom);
    INTERN(atomarray);
    INTERN(attr_get);
    INTERN(attr_modified);
    INTERN(background);
    INTERN(bang);
    INTERN(bgcolor);
    INTERN(box);
    INTERN(category);
    INTERN(char);
    INTERN(clear);
    INTERN(color);
    INTERN(default);
    INTERN(description);
    INTERN(dictionary);
    INTERN(dim);
    INTERN(dumpout);
    INTERN(enumvals);
    INTERN(fieldnamebyindex);
    INTERN(filterget);
    INTERN(filterset);
    INTERN(float);
    INTERN(float32);
    INTERN(float64);
    INTERN(fontface);
    INTERN(fontname);
    INTERN(fontsize);
    INTERN(free);
    INTERN(get);
    INTERN(getflags);
    INTERN(getmethod);
    INTERN(getname);
    INTERN(gettype);
    INTERN(getvalueof);
    INTERN(hidden);
    INTERN(hint);
    INTERN(ignoreclick);
    INTERN(int);
    INTERN(int32);
    INTERN(invisible);
    INTERN(label);
    INTERN(list);
    INTERN(loadbang);
    INTERN(long);
    INTERN(max);
    INTERN(maxclass);
    INTERN(min);
    INTERN(modified);
    INTERN(mult);
    INTERN(name);
    INTERN(nobox);
    INTERN(notify);
    INTERN(numfields);
    INTERN(numrecords);
    INTERN(object);
    INTERN(order);
    INTERN(orientation);
    INTERN(paint);
    INTERN(parameter_enable);
    INTERN(patching_position);
    INTERN(patching_rect);
    INTERN(patching_size);
    INTERN(pointer);
    INTERN(position);
    INTERN(presentation);
    INTERN(presentation_position);
    INTERN(presentation_rect);
    INTERN(presentation_size);
    INTERN(query);
    INTERN(rect);
    INTERN(save);
    INTERN(set);
    INTERN(setflags);
    INTERN(setmethod);
    INTERN(setvalueof);
    INTERN(signal);
    INTERN(size);
    INTERN(string);
    INTERN(style);
    INTERN(symbol);
    INTERN(textcolor);
    INTERN(type);
    INTERN(usercanget);
    INTERN(usercanset);
    INTERN(valuebyindex);
    INTERN(varname);
    _sym_nothing = gensym("");
    _sym_pound_B = gensym("#B");
    _sym_pound_P = gensym("#P");
    return &table;
}

}  // namespace
}  // namespace velmohost

extern "C" t_common_symbols_table* common_symbols_gettable(void) {
    static t_common_symbols_table* const table = velmohost::FillTable();
    return table;
}
