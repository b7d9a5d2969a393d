#pragma once

#include <Pegasus/Common/Array.h>

namespace Pegasus {

class CIMDateTime {
public:
    CIMDateTime();
    CIMDateTime(const CIMDateTime&);
    CIMDateTime(const String& str);
    CIMDateTime(Uint64 microSec, Boolean isInterval);
    ~CIMDateTime();
    CIMDateTime& operator=(const CIMDateTime&);
    String toString() const;
    void set(const String& str);
    void clear();
    static CIMDateTime getCurrentDateTime();
    static Sint64 getDifference(CIMDateTime startTime, CIMDateTime finishTime);
    Boolean isInterval() const;
    Boolean isInterval();
    Boolean equal(const CIMDateTime&) const;
    Uint64 toMicroSeconds() const;
};
Boolean operator==(const CIMDateTime&, const CIMDateTime&);

}  // namespace Pegasus
