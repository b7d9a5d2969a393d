#include "simhost/operations.h"

#include "simhost/instance_xml.h"
#include "simhost/text.h"

namespace simhost {

namespace {

CimError InvalidNamespace(const std::string& name) {
    return {3, "CIM_ERR_INVALID_NAMESPACE: " + name};
}
CimError InvalidParameter(const std::string& name) {
    return {4, "CIM_ERR_INVALID_PARAMETER: " + name};
}
CimError InvalidClass(const std::string& name) { return {5, "CIM_ERR_INVALID_CLASS: " + name}; }
CimError NotFound(const std::string& path) { return {6, "CIM_ERR_NOT_FOUND: " + path}; }
CimError NotSupported(const std::string& name) { return {7, "CIM_ERR_NOT_SUPPORTED: " + name}; }

InstanceFormat FormatOf(const CimRequest& request) {
    InstanceFormat format;
    format.qualifiers = request.include_qualifiers;
    format.class_origin = request.include_class_origin;
    format.property_list = request.property_list ? &*request.property_list : nullptr;
    return format;
}

/// LocalOnly is taken as false whatever the client says, as the standard recommends: properties
/// would be missing otherwise.
OperationResult EnumerateInstances(const HostVariant& host, const Namespace& from,
                                   const CimRequest& request) {
    if (request.class_name.empty()) {
        return InvalidParameter("ClassName");
    }
    if (!from.KnowsClass(request.class_name)) {
        return InvalidClass(request.class_name);
    }
    InstanceFormat format = FormatOf(request);
    if (!request.deep_inheritance) {
        format.only_class = from.FindClass(request.class_name);
    }
    std::string xml;
    for (const Class& candidate : from.classes) {
        if (from.IsA(candidate.name, request.class_name)) {
            for (const Instance& instance : candidate.instances) {
                if (const Instance* const shown = host.Shown(instance)) {
                    AppendNamedInstance(*shown, format, xml);
                }
            }
        }
    }
    return xml;
}

bool Fits(const std::string& filter, const std::string& value) {
    return filter.empty() || EqualIgnoringCase(filter, value);
}

/// The object at the other end of an association, if the filters let it pass.
const Instance* OtherEnd(const Namespace& in, const Association& association, bool from_source,
                         const CimRequest& request) {
    const Instance* other = from_source ? association.to : association.from;
    const std::string& near_role = from_source ? association.from_role : association.to_role;
    const std::string& far_role = from_source ? association.to_role : association.from_role;
    const bool fits =
        Fits(request.role, near_role) && Fits(request.result_role, far_role) &&
        (request.association_class.empty() ||
         in.IsA(association.class_name, request.association_class)) &&
        (request.result_class.empty() || in.IsA(other->of_class->name, request.result_class));
    return fits ? other : nullptr;
}

OperationResult Associators(const HostVariant& host, const Namespace& in,
                            const CimRequest& request) {
    if (!request.source) {
        return request.class_name.empty() ? InvalidParameter("ObjectName")
                                          : NotSupported("Associators of a class");
    }
    if (!in.KnowsClass(request.class_name)) {
        return InvalidClass(request.class_name);
    }
    const Instance* source = host.Find(in, *request.source);
    if (source == nullptr) {
        return NotFound(request.source->Text());
    }
    const InstanceFormat format = FormatOf(request);
    std::string xml;
    for (const Association& association : in.associations) {
        for (const bool from_source : {true, false}) {
            if ((from_source ? association.from : association.to) != source) {
                continue;
            }
            const Instance* const other = OtherEnd(in, association, from_source, request);
            const Instance* const shown = other == nullptr ? nullptr : host.Shown(*other);
            if (shown != nullptr) {
                AppendObjectWithPath(*shown, host.name(), in.name, format, xml);
            }
        }
    }
    return xml;
}

}  // namespace

OperationResult Perform(const HostVariant& host, const CimRequest& request) {
    const Namespace* addressed = host.described().FindNamespace(request.name_space);
    if (addressed == nullptr) {
        return InvalidNamespace(request.name_space);
    }
    if (request.intrinsic && EqualIgnoringCase(request.operation, "EnumerateInstances")) {
        return EnumerateInstances(host, *addressed, request);
    }
    if (request.intrinsic && EqualIgnoringCase(request.operation, "Associators")) {
        return Associators(host, *addressed, request);
    }
    return NotSupported(request.operation);
}

}  // namespace simhost
