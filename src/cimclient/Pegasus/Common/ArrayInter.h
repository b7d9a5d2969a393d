// Kept so that existing #include lines work.
#pragma once

#include "Pegasus/Common/Array.h"
