// Plain records of the host itself: computer system, hypervisor, packages, event log, privileges.
//
// Every text is UTF-8 and holds what the CIM property gave: numbers in decimal, date-times in the
// 25-character form of DSP0004, arrays with a blank after each element. A field whose property the
// host does not have stays empty. Field order is part of the interface.
#pragma once

#include <cstdint>
#include <string>

namespace Zentar::ZentarAgentless {

/// The host as a machine, from OMC_Chassis and IBM_ComputerSystem.
struct ComputerSystem {
    std::string product_name_;
    std::string version_;
    std::string manufacturer_;
    std::string spare_1_;  ///< never filled
    std::string name;      ///< never filled
    std::string serial_number_;
    std::string model_;
    std::string uuid_;
};

/// One installed software component, from VMware_ComponentSoftwareIdentity.
struct InstalledPackage {
    std::string product_name_;
    std::string product_version_;
    std::string spare_1_;  ///< never filled
    std::string summary_;
    std::string spare_2_;               ///< never filled
    std::string spare_3_;               ///< never filled
    std::string product_install_date_;  ///< CIM date-time
};

/// One entry of the IPMI system event log, from OMC_IpmiLogRecord.
struct IPMIEVENT {
    std::uint64_t record_id = 0;  ///< a negative number from the host arrives sign-extended
    std::string time_stamp;       ///< CIM date-time
    std::string message;
    std::int32_t sev = 0;  ///< always 0: the host reports no severity here
    std::string spare_1_;  ///< never filled
    std::string spare_2_;  ///< never filled
};

}  // namespace Zentar::ZentarAgentless

namespace Zentar::ZTEXSI {

/// The hypervisor's identity, from VMware_HypervisorSoftwareIdentity.
struct OperationSystem {
    std::string version_string;
    std::string name;
    std::string manufacturer;
    std::string build_number;
    std::string last_start_time;  ///< CIM date-time
};

/// One privilege, from VMware_Privilege.
struct VMwarePrivilegeData {
    std::string represents_authorization_rights;
    std::string privilege_granted;
    std::string instance_id;
    std::string element_name;
    std::string description;
    std::string caption;
    std::string activities;
    std::string activityQualifiers;
    std::string qualifier_formats;
};

}  // namespace Zentar::ZTEXSI

namespace ZentarAgentless = Zentar::ZentarAgentless;
namespace ZTEXSI = Zentar::ZTEXSI;
