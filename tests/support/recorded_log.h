// Keeps what the code under test logs.
#pragma once

#include <string>
#include <vector>

namespace support {

/// While it lives, all messages up to `level` come here and nowhere else.
class RecordedLog {
public:
    explicit RecordedLog(unsigned level = 4);
    ~RecordedLog();
    RecordedLog(const RecordedLog&) = delete;
    RecordedLog& operator=(const RecordedLog&) = delete;

    /// Each message as "LEVEL FILE TEXT", in order; line numbers are left out.
    std::vector<std::string> Messages() const;
    /// Only those of one level, the texts alone.
    std::vector<std::string> Texts(unsigned level) const;
    void Clear();
};

}  // namespace support
