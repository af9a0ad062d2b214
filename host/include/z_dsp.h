#pragma once

// Signal objects. Include after ext.h and ext_obex.h. Main thread unless said otherwise.

#include "ext_linklist.h"
#include "ext_maxtypes.h"
#include "ext_mess.h"
#include "ext_systhread.h"
#include "z_sampletype.h"

#ifndef PI
#define PI 3.14159265358979323846
#endif
#ifndef TWOPI
#define TWOPI 6.28318530717958647692
#endif

#define SYS_MAXBLKSIZE 2048  ///< largest signal vector in samples
#define MC_MAX_CHANS 1024

/// Header of every signal object: the first member of its record.
typedef struct t_pxobject {
    t_object z_ob;
    long z_in;        ///< inlet of the message being delivered
    void* z_proxy;    ///< the host's
    long z_disabled;  ///< non-zero while muted
    short z_count;    ///< number of signal inlets
    short z_misc;     ///< the Z_ flags
} t_pxobject;

/// Bits of t_pxobject::z_misc.
enum {
    Z_NO_INPLACE = 1,  ///< inputs and outputs never share a buffer
    Z_PUT_LAST = 2,
    Z_PUT_FIRST = 4,
    Z_IGNORE_DISABLE = 8,  ///< runs while disabled
    Z_DONT_ADD = 16,
    Z_MC_INLETS = 32
};

/// Processes one signal vector. Audio thread, real time: `sampleframes` is at most the size given to "dsp64"; inputs
/// that are not connected hold zeros, every output has a buffer.
typedef void (*t_perfroutine64)(t_object* x, t_object* dsp64, double** ins, long numins, double** outs, long numouts,
                                long sampleframes, long flags, void* userparam);

#define dsp_setup z_dsp_setup
#define dsp_free z_dsp_free

MAX_API_BEGIN

/// Adds the host's own messages for signal objects to a class; before class_register.
void class_dspinit(t_class* c);
/// Prepares a signal object with `nsignals` signal inlets; in the constructor.
void z_dsp_setup(t_pxobject* x, long nsignals);
/// Takes a signal object out of the chain; first thing in the free function.
void z_dsp_free(t_pxobject* x);

/// Puts a perform routine into the chain; from a "dsp64" method.
void dsp_add64(t_object* chain, t_object* x, t_perfroutine64 f, long flags, void* userparam);

// The audio settings, the last ones while audio is off.
float sys_getsr(void);        ///< sample rate in Hz
int sys_getblksize(void);     ///< signal vector in samples
int sys_getmaxblksize(void);  ///< largest signal vector in samples
int sys_getdspstate(void);    ///< non-zero while audio is on
int sys_getdspobjdspstate(t_object* o);

MAX_API_END
