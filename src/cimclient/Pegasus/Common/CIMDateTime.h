// Date-times of CIM (DSP0004): time stamps and intervals in the 25-character form.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

/// A value. Construction from a text in another form throws InvalidDateTimeFormatException, with a
/// field out of range DateTimeOutOfRangeException. A default object is the zero interval.
class CIMDateTime {
public:
    CIMDateTime();
    CIMDateTime(const String& str);
    CIMDateTime(Uint64 microSec, Boolean isInterval);

    /// As constructed, wildcards included.
    String toString() const;
    void set(const String& str);
    void clear();
    static CIMDateTime getCurrentDateTime();
    /// Microseconds from start to finish.
    static Sint64 getDifference(CIMDateTime startTime, CIMDateTime finishTime);
    Boolean isInterval() const;
    Boolean isInterval();
    Boolean isTimeStamp() const;
    Boolean equal(const CIMDateTime& x) const;
    /// Of a time stamp in UTC since the year 0, or of an interval; wildcards count as the lowest.
    Uint64 toMicroSeconds() const;

    CIMDateTime operator+(const CIMDateTime& x) const;
    CIMDateTime operator-(const CIMDateTime& x) const;
    CIMDateTime operator*(Uint64 x) const;
    CIMDateTime operator/(Uint64 x) const;
    Boolean operator<(const CIMDateTime& x) const;
    Boolean operator<=(const CIMDateTime& x) const;
    Boolean operator>(const CIMDateTime& x) const;
    Boolean operator>=(const CIMDateTime& x) const;
    Boolean operator!=(const CIMDateTime& x) const;

private:
    String text_;
};

Boolean operator==(const CIMDateTime& x, const CIMDateTime& y);

PEGASUS_NAMESPACE_END
