#pragma once

// The host's table of common symbols: a name as `_sym_name`, without a look-up. Call common_symbols_init once when the
// plug-in is loaded. The table's order is part of the host's binary interface.

#include "ext_mess.h"

#define MAX_COMMON_SYMBOL_COUNT 1454

/// Slot n (from 1) lies at byte 8 * n of the table.
typedef struct _common_symbols_table {
    long version;
    t_symbol* slots[MAX_COMMON_SYMBOL_COUNT];
} t_common_symbols_table;

MAX_API_BEGIN

/// The host's table, the same for every caller.
t_common_symbols_table* common_symbols_gettable(void);

MAX_API_END

// Pointer and initialiser belong to each plug-in and are no functions of the host.
BEGIN_USING_C_LINKAGE
#ifdef __cplusplus
C74_HIDDEN inline t_common_symbols_table* _common_symbols = nullptr;
C74_HIDDEN inline void common_symbols_init(void) { _common_symbols = common_symbols_gettable(); }
#else
C74_HIDDEN __attribute__((weak)) t_common_symbols_table* _common_symbols;
C74_HIDDEN __attribute__((weak)) void common_symbols_init(void) { _common_symbols = common_symbols_gettable(); }
#endif
END_USING_C_LINKAGE

#define MAX_COMMON_SYMBOL(slot) (_common_symbols->slots[(slot)-1])

#define _sym__preset MAX_COMMON_SYMBOL(1)
#define _sym_annotation MAX_COMMON_SYMBOL(37)
#define _sym_anything MAX_COMMON_SYMBOL(41)
#define _sym_append MAX_COMMON_SYMBOL(42)
#define _sym_atom MAX_COMMON_SYMBOL(60)
#define _sym_atomarray MAX_COMMON_SYMBOL(61)
#define _sym_attr_get MAX_COMMON_SYMBOL(64)
#define _sym_attr_modified MAX_COMMON_SYMBOL(67)
#define _sym_background MAX_COMMON_SYMBOL(84)
#define _sym_bang MAX_COMMON_SYMBOL(85)
#define _sym_bgcolor MAX_COMMON_SYMBOL(95)
#define _sym_box MAX_COMMON_SYMBOL(108)
#define _sym_category MAX_COMMON_SYMBOL(153)
#define _sym_char MAX_COMMON_SYMBOL(160)
#define _sym_clear MAX_COMMON_SYMBOL(177)
#define _sym_color MAX_COMMON_SYMBOL(200)
#define _sym_default MAX_COMMON_SYMBOL(245)
#define _sym_description MAX_COMMON_SYMBOL(275)
#define _sym_dictionary MAX_COMMON_SYMBOL(282)
#define _sym_dim MAX_COMMON_SYMBOL(284)
#define _sym_dumpout MAX_COMMON_SYMBOL(335)
#define _sym_enumvals MAX_COMMON_SYMBOL(367)
#define _sym_fieldnamebyindex MAX_COMMON_SYMBOL(385)
#define _sym_filterget MAX_COMMON_SYMBOL(395)
#define _sym_filterset MAX_COMMON_SYMBOL(396)
#define _sym_float MAX_COMMON_SYMBOL(418)
#define _sym_float32 MAX_COMMON_SYMBOL(419)
#define _sym_float64 MAX_COMMON_SYMBOL(420)
#define _sym_fontface MAX_COMMON_SYMBOL(433)
#define _sym_fontname MAX_COMMON_SYMBOL(436)
#define _sym_fontsize MAX_COMMON_SYMBOL(443)
#define _sym_free MAX_COMMON_SYMBOL(450)
#define _sym_get MAX_COMMON_SYMBOL(476)
#define _sym_getflags MAX_COMMON_SYMBOL(509)
#define _sym_getmethod MAX_COMMON_SYMBOL(528)
#define _sym_getname MAX_COMMON_SYMBOL(529)
#define _sym_gettype MAX_COMMON_SYMBOL(559)
#define _sym_getvalueof MAX_COMMON_SYMBOL(563)
#define _sym_hidden MAX_COMMON_SYMBOL(612)
#define _sym_hint MAX_COMMON_SYMBOL(618)
#define _sym_ignoreclick MAX_COMMON_SYMBOL(629)
#define _sym_int MAX_COMMON_SYMBOL(667)
#define _sym_int32 MAX_COMMON_SYMBOL(670)
#define _sym_invisible MAX_COMMON_SYMBOL(682)
#define _sym_label MAX_COMMON_SYMBOL(767)
#define _sym_list MAX_COMMON_SYMBOL(783)
#define _sym_loadbang MAX_COMMON_SYMBOL(789)
#define _sym_long MAX_COMMON_SYMBOL(797)
#define _sym_max MAX_COMMON_SYMBOL(812)
#define _sym_maxclass MAX_COMMON_SYMBOL(815)
#define _sym_min MAX_COMMON_SYMBOL(837)
#define _sym_modified MAX_COMMON_SYMBOL(843)
#define _sym_mult MAX_COMMON_SYMBOL(868)
#define _sym_name MAX_COMMON_SYMBOL(872)
#define _sym_nobox MAX_COMMON_SYMBOL(903)
#define _sym_nothing MAX_COMMON_SYMBOL(921)  // the empty text
#define _sym_notify MAX_COMMON_SYMBOL(922)
#define _sym_numfields MAX_COMMON_SYMBOL(933)
#define _sym_numrecords MAX_COMMON_SYMBOL(935)
#define _sym_object MAX_COMMON_SYMBOL(944)
#define _sym_order MAX_COMMON_SYMBOL(974)
#define _sym_orientation MAX_COMMON_SYMBOL(978)
#define _sym_paint MAX_COMMON_SYMBOL(991)
#define _sym_parameter_enable MAX_COMMON_SYMBOL(1000)
#define _sym_patching_position MAX_COMMON_SYMBOL(1022)
#define _sym_patching_rect MAX_COMMON_SYMBOL(1023)
#define _sym_patching_size MAX_COMMON_SYMBOL(1024)
#define _sym_pointer MAX_COMMON_SYMBOL(1038)
#define _sym_position MAX_COMMON_SYMBOL(1041)
#define _sym_pound_B MAX_COMMON_SYMBOL(1043)  // "#B"
#define _sym_pound_P MAX_COMMON_SYMBOL(1046)  // "#P"
#define _sym_presentation MAX_COMMON_SYMBOL(1050)
#define _sym_presentation_position MAX_COMMON_SYMBOL(1052)
#define _sym_presentation_rect MAX_COMMON_SYMBOL(1053)
#define _sym_presentation_size MAX_COMMON_SYMBOL(1054)
#define _sym_query MAX_COMMON_SYMBOL(1075)
#define _sym_rect MAX_COMMON_SYMBOL(1098)
#define _sym_save MAX_COMMON_SYMBOL(1158)
#define _sym_set MAX_COMMON_SYMBOL(1201)
#define _sym_setflags MAX_COMMON_SYMBOL(1217)
#define _sym_setmethod MAX_COMMON_SYMBOL(1222)
#define _sym_setvalueof MAX_COMMON_SYMBOL(1231)
#define _sym_signal MAX_COMMON_SYMBOL(1247)
#define _sym_size MAX_COMMON_SYMBOL(1250)
#define _sym_string MAX_COMMON_SYMBOL(1290)
#define _sym_style MAX_COMMON_SYMBOL(1291)
#define _sym_symbol MAX_COMMON_SYMBOL(1298)
#define _sym_textcolor MAX_COMMON_SYMBOL(1316)
#define _sym_type MAX_COMMON_SYMBOL(1361)
#define _sym_usercanget MAX_COMMON_SYMBOL(1399)
#define _sym_usercanset MAX_COMMON_SYMBOL(1400)
#define _sym_valuebyindex MAX_COMMON_SYMBOL(1409)
#define _sym_varname MAX_COMMON_SYMBOL(1410)
