#pragma once

// Everything of the catalogue. The objects themselves are listed in TeskObjects.def.
#include "TeskExternals.h"
#include "TeskMaxMspDocumentation.h"
#include "TeskMaxMspExternal.h"
#include "TeskMaxMspExternalDocumentation.h"
