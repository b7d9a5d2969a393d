#include "simhost/served_host.h"

#include "simhost/fleet_variation.h"

namespace simhost {

HostVariant ServedHost::Variant() const {
    return number == 0 ? HostVariant(description.host())
                       : NumberedVariant(description.host(), number);
}

}  // namespace simhost
