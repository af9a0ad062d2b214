#pragma once

// Hash tables, as records name them.

#include "ext_linklist.h"

typedef struct _hashtab {
    t_object ob;
    long slotcount;
    t_linklist** slots;
    long readonly;
    long flags;
    void* reserved;
} t_hashtab;
