#pragma once

// Files opened through the host.

#include "ext_prefix.h"

typedef struct _filehandle* t_filehandle;
