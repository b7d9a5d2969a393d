// Texts of object paths. A path that was read reads the same once it is written, unless it has a
// host without a namespace: that form is written, but refused.
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/Exception.h"
#include "target.h"

using namespace Pegasus;

void fuzz::Try(std::string_view input) {
    try {
        const CIMObjectPath path(String(input.data(), static_cast<Uint32>(input.size())));
        const String written = path.toString();
        if (written.find("/:") != PEG_NOT_FOUND) {
            return;
        }
        const CIMObjectPath again(written);
        Require(again.identical(path));
        Require(again.toString() == written);
        Require(again.makeHashCode() == path.makeHashCode());
    } catch (const Exception& error) {
        error.getMessage().getCString();
    }
}
