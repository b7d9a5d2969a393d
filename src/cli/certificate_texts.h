// A certificate's contents as plain texts.
#pragma once

#include "cli/certificate_source.h"

struct x509_st;

namespace command {

/// Null gives empty texts.
ShownCertificate Describe(const x509_st* certificate);

}  // namespace command
