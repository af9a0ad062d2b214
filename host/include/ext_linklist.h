#pragma once

// Linked lists, as records name them, and the flags that tell what a container owns.

#include "ext_mess.h"
#include "ext_systhread.h"

/// How a container treats its values.
enum {
    OBJ_FLAG_OBJ = 0x00000000,     ///< objects, freed with object_free
    OBJ_FLAG_REF = 0x00000001,     ///< objects of someone else
    OBJ_FLAG_DATA = 0x00000002,    ///< plain data of someone else
    OBJ_FLAG_MEMORY = 0x00000004,  ///< memory, freed with sysmem_freeptr
    OBJ_FLAG_SILENT = 0x00000100   ///< changes are not notified
};

typedef struct llelem {
    void* thing;
    struct llelem* next;
    struct llelem* prev;
} t_llelem;

typedef struct linklist {
    t_object ob;
    long count;
    t_llelem* head;
    t_llelem* tail;
    void* internal[6];
    long flags;
    long reserved;
} t_linklist;
