#pragma once

#include <Pegasus/Common/String.h>

namespace Pegasus {

class CIMFlavor {
public:
    static const CIMFlavor NONE;
    CIMFlavor(const CIMFlavor&);
    CIMFlavor& operator=(const CIMFlavor&);
};

}  // namespace Pegasus
