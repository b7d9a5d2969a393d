#include "module/exsi/identifying_info.h"

namespace Zentar::Agentless {

namespace {

using ZentarAgentless::ComputerSystem;

void StoreProductName(ComputerSystem& record, const std::string& info) {
    record.product_name_ = info.substr(0, info.find(':'));
}

void StoreUuid(ComputerSystem& record, const std::string& info) { record.uuid_ = info; }

void StoreModelAndSerialNumber(ComputerSystem& record, const std::string& info) {
    const std::size_t colon = info.find(':');
    record.model_ = info.substr(0, colon);
    record.serial_number_ = colon == std::string::npos ? std::string() : info.substr(colon + 1);
}

constexpr IdentifyingField kProductName[] = {
    {"==========Product Name is : ============", &ComputerSystem::product_name_},
};
constexpr IdentifyingField kUuid[] = {
    {"==========System UUID is : ============", &ComputerSystem::uuid_},
};
constexpr IdentifyingField kModelAndSerialNumber[] = {
    {"==========Model is : ============", &ComputerSystem::model_},
    {"==========Serial Number is : ============", &ComputerSystem::serial_number_},
};

constexpr IdentifyingRule kRules[] = {
    {"CIM:ProductName", StoreProductName, kProductName},
    {"CIM:GUID", StoreUuid, kUuid},
    {"CIM:Model:SerialNumber", StoreModelAndSerialNumber, kModelAndSerialNumber},
};

}  // namespace

std::span<const IdentifyingRule> IdentifyingRules() { return kRules; }

}  // namespace Zentar::Agentless
