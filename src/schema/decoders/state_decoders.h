// Words for the numeric states of CIM_EnabledLogicalElement and for the interface types of
// CIM_ProtocolEndpoint, after the DMTF value maps of those properties.
//
// Each function takes the property's text and decodes its leading decimal number; text without one
// counts as 0, and of an array's text only the first number counts. A code without a word gives
// empty text. All are pure.
#pragma once

#include <string>

namespace schema {

std::string GetEnabledState(const std::string& code);
std::string GetRequestedState(const std::string& code);
/// Every code without a word of its own reads "DMTF Reserved".
std::string GetTransitioningToState(const std::string& code);
std::string GetAvailableRequestedStates(const std::string& code);
/// Only the IP interface types have a word.
std::string GetProtocolIFType(const std::string& code);

}  // namespace schema
