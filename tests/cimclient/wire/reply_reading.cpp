#include "cimclient/wire/reply_reading.h"

#include <stdexcept>

#include "cimxml/response_reader.h"
#include "client/failures.h"

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

/// The body as it arrives in parts of this many bytes. Each part is gone with the next one.
cimclient::XmlReader::Source InParts(std::string body, std::size_t size) {
    return [body = std::move(body), size, at = std::size_t{0}, part = std::string()]() mutable {
        part = body.substr(at, size);
        at += part.size();
        return std::string_view(part);
    };
}

constexpr std::size_t kWhole = std::string::npos;

Array<CIMInstance> Instances(const std::string& body, std::size_t part = kWhole) {
    Array<CIMInstance> instances;
    cimclient::WithExceptions(
        [&] { instances = cimclient::ReadInstances(InParts(Addressed(body), part), kMessageId); });
    return instances;
}

Array<CIMObject> Objects(const std::string& content, std::size_t part = kWhole) {
    Array<CIMObject> objects;
    cimclient::WithExceptions([&] {
        objects = cimclient::ReadObjects(
            InParts(Addressed(BodyReturning(content, "Associators")), part), kMessageId);
    });
    return objects;
}

/// The outcome of reading the whole at once, which must not depend on the parts that arrive.
template <class Read>
std::string OutcomeHoweverItArrives(Read read) {
    std::string outcome = OutcomeOf([&] { return read(kWhole); });
    for (const std::size_t part : {std::size_t{1}, std::size_t{7}, std::size_t{64}}) {
        EXPECT_EQ(OutcomeOf([&] { return read(part); }), outcome) << "in parts of " << part;
    }
    return outcome;
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
    return OutcomeHoweverItArrives([&](std::size_t part) { return Instances(body, part); });
}

std::string OutcomeOfContent(const std::string& content) { return OutcomeOfBody(Body(content)); }

std::string OutcomeOfAssociators(const std::string& content) {
    return OutcomeHoweverItArrives([&](std::size_t part) { return Objects(content, part); });
}

CIMInstance InstanceOf(const std::string& named_instance) {
    return Only(Instances(BodyReturning(named_instance)));
}

CIMObject ObjectOf(const std::string& object_with_path) { return Only(Objects(object_with_path)); }

CIMConstProperty PropertyOf(const std::string& properties) {
    const CIMInstance instance = InstanceOf(NamedInstance("1", properties));
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
