// Texts of object paths. A path that was read reads the same once it is written, unless it has a
// host without a namespace: that form is written, but refused.
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/Exception.h"
#include "common/text/utf8.h"
#include "target.h"

using namespace Pegasus;

void fuzz::Try(std::string_view input) {
    if (Zentar::FirstInvalidUtf8(input) != std::string_view::npos) {
        return;
    }
    try {
        const String written = CIMObjectPath(String::FromUtf8(input)).toString();
        if (written.utf8().find("/:") != std::string_view::npos) {
            return;
        }
        Require(CIMObjectPath(written).toString().utf8() == written.utf8());
    } catch (const Exception& error) {
        error.getMessage().getCString();
    }
}
