#include "reply_text.h"

namespace bench {

namespace {

constexpr const char* kClass = "VMware_ComponentSoftwareIdentity";

/// What a package's own texts are made of. The number makes name, version and description differ
/// from package to package, as they do on a host.
struct Package {
    const char* name;
    const char* version;
    const char* description;
};

constexpr Package kPackages[] = {
    {"bnxtnet", "20.6.101.7-23vmw.670.3.73.14320388",
     "Driver for 10/25/40/50/100 GbE network adapters with "
     "remote direct memory access"},
    {"esx-base", "6.7.0-3.73.14320388",
     "Base system of the hypervisor: kernel, services &amp; command line"},
    {"esx-ui", "1.33.4-14093553", "Host client \xE2\x80\x94 manage this host in a browser"},
    {"lsi-mr3", "7.708.07.00-3vmw.670.3.73.14320388",
     "Driver for 6 and 12 Gbit/s RAID controllers"},
    {"lsu-lsi-lsi-msgpt3-plugin", "1.0.0-9vmw.670.2.48.13006603",
     "Plug-in that reports the status of drives behind SAS 3 controllers"},
};

/// Appends `NAME="..." TYPE="..."` and the value in a property element.
class InstanceText {
public:
    explicit InstanceText(std::string& text) : text_(text) {}

    void Property(const char* name, const char* type, const std::string& value) {
        text_ += "<PROPERTY NAME=\"" + std::string(name) + "\"  TYPE=\"" + type + "\">\n<VALUE>" +
                 value + "</VALUE>\n</PROPERTY>\n";
    }

    void Array(const char* name, const char* type, std::initializer_list<const char*> values) {
        text_ += "<PROPERTY.ARRAY NAME=\"" + std::string(name) + "\"  TYPE=\"" + type +
                 "\">\n<VALUE.ARRAY>\n";
        for (const char* value : values) {
            text_ += "<VALUE>" + std::string(value) + "</VALUE>\n";
        }
        text_ += "</VALUE.ARRAY>\n</PROPERTY.ARRAY>\n";
    }

private:
    std::string& text_;
};

void AppendPackage(std::size_t number, std::string& text) {
    const Package& package = kPackages[number % std::size(kPackages)];
    const std::string name = package.name + ("-" + std::to_string(number));
    const std::string version = package.version + ("." + std::to_string(number));
    const std::string id = "VMware_bootbank_" + name + "_" + version;

    text += "<VALUE.NAMEDINSTANCE>\n<INSTANCENAME CLASSNAME=\"" + std::string(kClass) +
            "\">\n<KEYBINDING NAME=\"InstanceID\">\n<KEYVALUE VALUETYPE=\"string\">" + id +
            "</KEYVALUE>\n</KEYBINDING>\n</INSTANCENAME>\n<INSTANCE CLASSNAME=\"" + kClass +
            "\" >\n";
    InstanceText instance(text);
    instance.Property("InstanceID", "string", id);
    instance.Property("ElementName", "string", name);
    instance.Property("Name", "string", name);
    instance.Property("Description", "string", name + ": " + package.description);
    instance.Property("VersionString", "string", version);
    instance.Property("InstallDate", "datetime", "20260217090412.000000+000");
    instance.Property("Manufacturer", "string", "VMW");
    instance.Array("Classifications", "uint16", {"2", "3"});
    instance.Property("IsEntity", "boolean", "TRUE");
    instance.Array("OperationalStatus", "uint16", {"2"});
    instance.Property("HealthState", "uint16", "5");
    text += "</INSTANCE>\n</VALUE.NAMEDINSTANCE>\n";
}

}  // namespace

ReplyText PackagesReply(std::size_t instances) {
    ReplyText reply;
    reply.before_id =
        "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
        "<MESSAGE ID=\"";
    reply.after_id =
        "\" PROTOCOLVERSION=\"1.0\">\n<SIMPLERSP>\n<IMETHODRESPONSE NAME=\"EnumerateInstances\">\n"
        "<IRETURNVALUE>\n";
    for (std::size_t i = 0; i < instances; ++i) {
        AppendPackage(i, reply.after_id);
    }
    reply.after_id += "</IRETURNVALUE>\n</IMETHODRESPONSE>\n</SIMPLERSP>\n</MESSAGE>\n</CIM>\n";
    return reply;
}

}  // namespace bench
