#include "works.h"

#include <Pegasus/Client/CIMClient.h>

#include <pugixml.hpp>
#include <stdexcept>
#include <string_view>

#include "process_use.h"

namespace bench {

namespace {

using Instances = Pegasus::Array<Pegasus::CIMInstance>;

/// Keeps the texts from being optimised away.
std::size_t TakeTexts(const Pegasus::CIMInstance& instance) {
    std::size_t length = 0;
    for (Pegasus::Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        length +=
            std::string_view(instance.getProperty(i).getValue().toString().getCString()).size();
    }
    return length;
}

void TakeTexts(const Instances& instances, std::size_t expected) {
    std::size_t length = 0;
    for (Pegasus::Uint32 i = 0; i < instances.size(); ++i) {
        length += TakeTexts(instances[i]);
    }
    if (instances.size() != expected || length < expected) {
        throw std::runtime_error("the reply was not read as it was sent");
    }
}

}  // namespace

struct DecodeWork::Client {
    Pegasus::CIMClient cim;
};

DecodeWork::DecodeWork(std::uint16_t port) : client_(new Client) {
    client_->cim.setTimeout(600'000);
    client_->cim.connect("127.0.0.1", port, "", "");
}

DecodeWork::~DecodeWork() { delete client_; }

double DecodeWork::Run(std::size_t instances) {
    const double started = ProcessorSeconds();
    const Instances reply = client_->cim.enumerateInstances(
        Pegasus::CIMNamespaceName("root/cimv2"),
        Pegasus::CIMName("VMware_ComponentSoftwareIdentity"), true, true);
    TakeTexts(reply, instances);
    return ProcessorSeconds() - started;
}

double RunParse(std::string body) {
    const double started = ProcessorSeconds();
    pugi::xml_document document;
    if (!document.load_buffer_inplace(body.data(), body.size())) {
        throw std::runtime_error("the reply is not well formed");
    }
    return ProcessorSeconds() - started;
}

}  // namespace bench
