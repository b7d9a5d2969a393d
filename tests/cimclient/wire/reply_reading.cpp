#include "cimclient/wire/reply_reading.h"

#include <stdexcept>

#include "cimxml/response_reader.h"

namespace wire {

using namespace Pegasus;
using namespace support;

namespace {

constexpr unsigned kMessageId = 1000;

std::string Addressed(std::string body) {
    const std::string place = "@ID@";
    const std::size_t at = body.find(place);
    return at == std::string::npos ? body
                                   : body.replace(at, place.size(), std::to_string(kMessageId));
}

Array<CIMInstance> Instances(const std::string& body) {
    return cimclient::ReadInstances(Addressed(body), kMessageId);
}

Array<CIMObject> Objects(const std::string& content) {
    return cimclient::ReadObjects(Addressed(BodyReturning(content, "Associators")), kMessageId);
}

template <class Object>
Object Only(const Array<Object>& objects) {
    if (objects.size() != 1) {
        throw std::runtime_error("not one object but " + std::to_string(objects.size()));
    }
    return objects[0];
}

}  // namespace

std::string OutcomeOfBody(const std::string& body) {
    return OutcomeOf([&] { return Instances(body); });
}

std::string OutcomeOfContent(const std::string& content) { return OutcomeOfBody(Body(content)); }

std::string OutcomeOfAssociators(const std::string& content) {
    return OutcomeOf([&] { return Objects(content); });
}

CIMException ErrorOf(const std::string& content) {
    try {
        Instances(Body(content));
    } catch (const CIMException& error) {
        return error;
    }
    throw std::runtime_error("the answer is no error");
}

CIMInstance InstanceOf(const std::string& named_instance) {
    return Only(Instances(BodyReturning(named_instance)));
}

CIMObject ObjectOf(const std::string& object_with_path) { return Only(Objects(object_with_path)); }

CIMProperty PropertyOf(const std::string& properties) {
    CIMInstance instance = InstanceOf(NamedInstance("1", properties));
    if (instance.getPropertyCount() != 1) {
        throw std::runtime_error("not one property but " +
                                 std::to_string(instance.getPropertyCount()));
    }
    return instance.getProperty(0);
}

std::string ValueOf(const std::string& type, const std::string& text) {
    return ViewOf(PropertyOf("<PROPERTY NAME=\"p\" TYPE=\"" + type + "\"><VALUE>" + text +
                             "</VALUE></PROPERTY>")
                      .getValue());
}

std::string ArrayOf(const std::string& type, const std::string& elements) {
    return ViewOf(PropertyOf("<PROPERTY.ARRAY NAME=\"p\" TYPE=\"" + type + "\"><VALUE.ARRAY>" +
                             elements + "</VALUE.ARRAY></PROPERTY.ARRAY>")
                      .getValue());
}

std::string TextOfValue(const std::string& content) {
    std::string text;
    const std::string failure = FailureOf([&] { text = ValueOf("string", content); });
    return text.empty() ? failure : text;
}

std::string NamesIn(const std::string& properties) {
    const CIMInstance instance = InstanceOf(NamedInstance("1", properties));
    std::string names;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        names += TextOf(instance.getProperty(i).getName().getString()) + " ";
    }
    return names;
}

}  // namespace wire
