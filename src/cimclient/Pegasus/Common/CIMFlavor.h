// How a qualifier propagates (DSP0004).
#pragma once

#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMFlavor {
public:
    static const CIMFlavor NONE;
    static const CIMFlavor OVERRIDABLE;
    static const CIMFlavor ENABLEOVERRIDE;
    static const CIMFlavor DISABLEOVERRIDE;
    static const CIMFlavor TOSUBCLASS;
    static const CIMFlavor RESTRICTED;
    static const CIMFlavor TOINSTANCE;
    static const CIMFlavor TRANSLATABLE;
    static const CIMFlavor DEFAULTS;

    CIMFlavor() = default;

    void addFlavor(const CIMFlavor& flavor) { bits_ |= flavor.bits_; }
    void removeFlavor(const CIMFlavor& flavor) { bits_ &= ~flavor.bits_; }
    Boolean hasFlavor(const CIMFlavor& flavor) const {
        return (bits_ & flavor.bits_) == flavor.bits_;
    }
    Boolean equal(const CIMFlavor& flavor) const { return bits_ == flavor.bits_; }
    /// The flavors' names, each followed by a blank.
    String toString() const;
    CIMFlavor operator+(const CIMFlavor& flavor) const { return CIMFlavor(bits_ | flavor.bits_); }

private:
    explicit CIMFlavor(Uint32 bits) : bits_(bits) {}
    Uint32 bits_ = 0;
};

inline Boolean operator==(const CIMFlavor& x, const CIMFlavor& y) { return x.equal(y); }
inline Boolean operator!=(const CIMFlavor& x, const CIMFlavor& y) { return !x.equal(y); }

PEGASUS_NAMESPACE_END
