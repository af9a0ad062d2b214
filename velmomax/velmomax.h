/// The object toolkit of the suite: include this one. A source that also needs headers of libvelmodsp includes those
/// first (see velmomax_api.h).
///
///     t_class* c;
///     velmomax::InitCommonSymbols();                       // in the entry point, in this order
///     c = class_new(...);
///     velmomax::AddClassFlagNewDictionary(c);
///     velmomax::AddDocumentationAttribute(c, ...);         // four of them
///     velmomax::AddCommonMethods(c);
///     velmomax::AddMspMethods(c);                          // signal objects, and AddDspChainMethod and so on
///     ...                                                  // the object's own messages and attributes
///     class_dspinit(c);
///     class_register(gensym("box"), c);
#pragma once

#include "velmomax_api.h"
#include "velmomax_arguments.h"
#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_class.h"
#include "velmomax_dictionary.h"
#include "velmomax_documentation.h"
#include "velmomax_guard.h"
#include "velmomax_json.h"
#include "velmomax_messages.h"
#include "velmomax_msp.h"
#include "velmomax_object.h"
#include "velmomax_path.h"
#include "velmomax_state.h"
#include "velmomax_symbols.h"
#include "velmomax_text.h"
#include "velmomax_xml.h"
