#pragma once

// The host's API: include this first, then ext_obex.h and, for signal objects, z_dsp.h.

/// SDK version that these headers correspond to: 8.2.
#define C74_MAX_SDK_VERSION 0x0820

/// One allocator for everything: getbytes and sysmem_newptr are the same.
#define MM_UNIFIED

#include "commonsyms.h"
#include "ext_assist.h"
#include "ext_atomarray.h"
#include "ext_dictionary.h"
#include "ext_hashtab.h"
#include "ext_linklist.h"
#include "ext_maxtypes.h"
#include "ext_mess.h"
#include "ext_obex.h"
#include "ext_obex_util.h"
#include "ext_path.h"
#include "ext_post.h"
#include "ext_prefix.h"
#include "ext_proto.h"
#include "ext_strings.h"
#include "ext_sysfile.h"
#include "ext_sysmem.h"
#include "ext_systhread.h"
#include "jpatcher_api.h"

#define clock_free freeobject
#define binbuf_free freeobject

BEGIN_USING_C_LINKAGE

/// A plug-in's entry point, called once on the main thread when the plug-in is loaded; `r` may be null.
void C74_EXPORT ext_main(void* r);

END_USING_C_LINKAGE
