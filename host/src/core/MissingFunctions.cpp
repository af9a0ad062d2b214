// Functions that the 64-bit host exports and this one does not have. Objects that import them load all the same, and a
// call is told in the Max window instead of ending the program. Whoever implements one removes it here: the linker
// takes no name twice. No header of the host is included, so that a name alone stands for a function of any shape.

#include <atomic>

extern "C" void object_error(void* x, const char* format, ...);

namespace velmohost {

/// Tells it once a function. Visible to all, so that the compiler keeps its result, which stays in the register of
/// floating-point results: a caller who expects such a number gets 0 as well.
[[gnu::noinline]] double TellMissing(std::atomic<bool>& told, const char* name) {
    if (!told.exchange(true)) object_error(nullptr, "%s is not there in this host: calls do nothing", name);
    return 0.0;
}

}  // namespace velmohost

// NOLINTBEGIN(bugprone-macro-parentheses): the name is one of a function
#define MISSING(name)                                        \
    extern "C" [[gnu::visibility("default")]] void* name() { \
        static std::atomic<bool> told = false;               \
        velmohost::TellMissing(told, #name);                 \
        return nullptr;                                      \
    }

// NOLINTEND(bugprone-macro-parentheses)

// clang-format off
MISSING(atom_getfloatarg)
MISSING(atom_getintarg)
MISSING(atom_getsymarg)
MISSING(binbuf_text)
MISSING(binbuf_totext)
MISSING(binbuf_vinsert)
MISSING(buffer_getchannelcount)
MISSING(buffer_getframecount)
MISSING(buffer_getmillisamplerate)
MISSING(buffer_getsamplerate)
MISSING(buffer_locksamples)
MISSING(buffer_ref_exists)
MISSING(buffer_ref_getobject)
MISSING(buffer_ref_new)
MISSING(buffer_ref_notify)
MISSING(buffer_ref_set)
MISSING(buffer_setdirty)
MISSING(buffer_unlocksamples)
MISSING(buffer_view)
MISSING(class_dspinitjbox)
MISSING(class_setname)
MISSING(class_sticky)
MISSING(class_sticky_clear)
MISSING(clock_delay)
MISSING(clock_fdelay)
MISSING(clock_getftime)
MISSING(clock_new)
MISSING(clock_unset)
MISSING(critical_enter)
MISSING(critical_exit)
MISSING(critical_free)
MISSING(critical_new)
MISSING(defer)
MISSING(defer_low)
MISSING(defer_medium)
MISSING(dictobj_dictionaryfromatoms)
MISSING(dictobj_dictionaryfromstring)
MISSING(dictobj_key_parse)
MISSING(dictobj_validate)
MISSING(dsp_resize)
MISSING(freebytes)
MISSING(getbytes)
MISSING(gettime)
MISSING(gettime_forobject)
MISSING(hashtab_chuckkey)
MISSING(hashtab_clear)
MISSING(hashtab_flags)
MISSING(hashtab_funall)
MISSING(hashtab_getkeys)
MISSING(hashtab_getsize)
MISSING(hashtab_lookup)
MISSING(hashtab_lookuplong)
MISSING(hashtab_new)
MISSING(hashtab_store)
MISSING(hashtab_storeflags)
MISSING(isr)
MISSING(linklist_append)
MISSING(linklist_chuck)
MISSING(linklist_chuckindex)
MISSING(linklist_chuckobject)
MISSING(linklist_clear)
MISSING(linklist_deleteindex)
MISSING(linklist_flags)
MISSING(linklist_funall)
MISSING(linklist_getindex)
MISSING(linklist_getsize)
MISSING(linklist_new)
MISSING(linklist_next)
MISSING(linklist_objptr2index)
MISSING(linklist_reverse)
MISSING(locatefile_extended)
MISSING(object_attr_getdump)
MISSING(object_clone)
MISSING(object_getvalueof)
MISSING(object_method)
MISSING(object_new)
MISSING(object_setvalueof)
MISSING(object_subscribe)
MISSING(object_unsubscribe)
MISSING(ouchstring)
MISSING(outlet_add)
MISSING(outlet_rm)
MISSING(path_absolutepath)
MISSING(path_createsysfile)
MISSING(path_exists)
MISSING(path_opensysfile)
MISSING(qelem_free)
MISSING(qelem_new)
MISSING(qelem_set)
MISSING(qelem_unset)
MISSING(quittask_install)
MISSING(quittask_remove)
MISSING(schedule)
MISSING(schedule_delay)
MISSING(set_zero64)
MISSING(sysfile_close)
MISSING(sysfile_geteof)
MISSING(sysfile_getpos)
MISSING(sysfile_read)
MISSING(sysfile_readtextfile)
MISSING(sysfile_setpos)
MISSING(sysfile_write)
MISSING(sysfile_writetextfile)
MISSING(systhread_create)
MISSING(systhread_exit)
MISSING(systhread_isaudiothread)
MISSING(systhread_ismainthread)
MISSING(systhread_istimerthread)
MISSING(systhread_join)
MISSING(systhread_mutex_free)
MISSING(systhread_mutex_lock)
MISSING(systhread_mutex_new)
MISSING(systhread_mutex_trylock)
MISSING(systhread_mutex_unlock)
MISSING(systhread_self)
MISSING(systhread_sleep)
MISSING(systhread_terminate)
MISSING(systimer_gettime)
MISSING(z_isconnected)
MISSING(z_jbox_dsp_free)
MISSING(z_jbox_dsp_setup)
// clang-format on
