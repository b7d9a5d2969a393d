// Replies of CIM servers, in the form in which they go over the wire.
#pragma once

#include <string>
#include <vector>

namespace support {

/// A CIM-XML body whose fifth line opens IMETHODRESPONSE. `content` stands on the sixth line,
/// within it. The message ID is @ID@, which a scripted server replaces.
std::string Body(const std::string& content, const std::string& operation = "EnumerateInstances");

/// `content` as the return value.
std::string BodyReturning(const std::string& content,
                          const std::string& operation = "EnumerateInstances");

/// An instance of class X with the key k, as enumerations return it. `properties` is XML.
std::string NamedInstance(const std::string& key, const std::string& properties = "");

/// A head and a body. Each line of `headers` is added to the status line as it stands.
std::string Reply(const std::string& status, const std::vector<std::string>& headers,
                  const std::string& body);

/// An answer with status 200 and the usual headers, whose length is announced.
std::string Answer(const std::string& body, const std::vector<std::string>& headers = {});
/// An answer that returns `count` instances.
std::string AnswerOf(int count, const std::vector<std::string>& headers = {});

/// The body in chunks of `size` bytes, the message ID in one piece, with the trailer's lines.
std::string Chunked(const std::string& body, std::size_t size,
                    const std::vector<std::string>& trailer = {});
/// An answer in one chunk with these trailer lines.
std::string ChunkedAnswer(const std::string& body, const std::vector<std::string>& trailer = {});

/// The head of an answer with the usual headers and these, the blank line included.
std::string AnswerHead(const std::vector<std::string>& headers = {});

/// A 401 with these further headers and an empty body.
std::string Challenge(const std::vector<std::string>& headers);
/// A 401 that asks for Basic credentials.
std::string Challenge();

}  // namespace support
