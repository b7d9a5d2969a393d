// Included before every source that is checked: after our client's headers, the names that only its
// own rooms may use are errors. Another client has none of them.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <boost/pfr/tuple_size.hpp>  // has some of the names itself

#pragma GCC poison kalvex detail utf8 FromUtf8 Unchecked
