#pragma once

// Threads and locks, as records name them.

#include "ext_prefix.h"

typedef void* t_systhread;
typedef void* t_systhread_mutex;
typedef void* t_systhread_cond;
