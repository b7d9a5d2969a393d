// Texts of date-times: one per line, of which two are calculated with.
#include "Pegasus/Common/CIMDateTime.h"
#include "Pegasus/Common/Exception.h"
#include "target.h"

namespace {

using namespace Pegasus;

CIMDateTime Read(std::string_view text) {
    return CIMDateTime(String(text.data(), static_cast<Uint32>(text.size())));
}

template <class Operation>
void Attempt(Operation operation) {
    try {
        operation();
    } catch (const Exception& error) {
        error.getMessage().getCString();
    }
}

void CheckAlone(const CIMDateTime& value) {
    fuzz::Require(value.equal(CIMDateTime(value.toString())));
    fuzz::Require(value.isInterval() != value.isTimeStamp());
    value.toMicroSeconds();
    for (const Uint64 factor : {Uint64{0}, Uint64{3}, ~Uint64{0}}) {
        Attempt([&] { (value * factor).toString(); });
        Attempt([&] { (value / factor).toString(); });
    }
}

void CheckTogether(const CIMDateTime& first, const CIMDateTime& second) {
    Attempt([&] { (first + second).toString(); });
    Attempt([&] { (first - second).toString(); });
    Attempt([&] { CIMDateTime::getDifference(first, second); });
    Attempt([&] { fuzz::Require(!(first < second && second < first)); });
    Attempt([&] { fuzz::Require((first <= second) == (second >= first)); });
}

}  // namespace

void fuzz::Try(std::string_view input) {
    const std::size_t end = input.find('\n');
    Attempt([&] {
        const CIMDateTime first = Read(input.substr(0, end));
        CheckAlone(first);
        if (end != std::string_view::npos) {
            CheckTogether(first, Read(input.substr(end + 1)));
        }
    });
}
