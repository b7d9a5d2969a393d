// The whole command, from a host's bytes on a socket to what people and programs read.
//
// An input is a letter for what is asked of the host, a letter for how it is written, and the
// replies, separated by kReplySeparator.
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/run_command.h"
#include "common/log/log_control.h"
#include "replaying_host.h"
#include "shown_text.h"
#include "target.h"

namespace {

constexpr const char* kUser = "root";
constexpr const char* kPassword = "fuzzed-secret";
constexpr std::string_view kEncoded = "cm9vdDpmdXp6ZWQtc2VjcmV0";  // both, as they are sent

struct Question {
    char letter;
    std::vector<std::string> arguments;
};

const Question kQuestions[] = {
    {'a', {"inventory"}},           {'s', {"inventory", "system"}},
    {'h', {"inventory", "os"}},     {'p', {"inventory", "packages"}},
    {'i', {"inventory", "events"}}, {'v', {"inventory", "privileges"}},
    {'n', {"inventory", "ports"}},  {'4', {"inventory", "ipv4"}},
    {'6', {"inventory", "ipv6"}},   {'d', {"inventory", "pci"}},
    {'u', {"supported"}},
};

enum class Form { kText, kJson, kTextAndLog };

struct Way {
    char letter;
    Form form;
    std::vector<std::string> arguments;
};

const Way kWays[] = {
    {'t', Form::kText, {}},
    {'j', Form::kJson, {"--format", "json"}},
    {'l', Form::kTextAndLog, {"--log-level", "4"}},
};

template <class Choice, std::size_t count>
const Choice* Find(const Choice (&choices)[count], char letter) {
    for (const Choice& choice : choices) {
        if (choice.letter == letter) {
            return &choice;
        }
    }
    return nullptr;
}

/// What is written to a stream while it lives.
class Capture {
public:
    explicit Capture(std::ostream& stream) : stream_(stream), before_(stream.rdbuf(&text_)) {}
    ~Capture() { stream_.rdbuf(before_); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    std::string Text() const { return text_.str(); }

private:
    std::ostream& stream_;
    std::stringbuf text_;
    std::streambuf* before_;
};

struct Written {
    int status;
    std::string out;
    std::string err;
    std::string log;
};

std::string& Log() {
    static std::string& log = *new std::string;
    static const bool is_kept = [] {
        Zentar::SetLogSink(
            [](const Zentar::LogMessage& message) { log += Zentar::FormatLogMessage(message); });
        return true;
    }();
    fuzz::Require(is_kept);
    return log;
}

Written RunCommand(const Question& question, const Way& way, std::uint16_t port) {
    std::vector<std::string> arguments = {"kalvex"};
    const auto add = [&](const std::vector<std::string>& more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
    };
    add(question.arguments);
    add({"--host", "127.0.0.1", "--port", std::to_string(port), "--transport", "http", "--user",
         kUser, "--connect-timeout", "1", "--request-timeout", "1", "--timeout", "5"});
    add(way.arguments);
    std::vector<const char*> pointers;
    pointers.reserve(arguments.size());
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    setenv("KALVEX_PASSWORD", kPassword, 1);
    Log().clear();
    const Capture out(std::cout);
    const Capture err(std::cerr);
    const int status = command::RunCommand(static_cast<int>(pointers.size()), pointers.data());
    return {status, out.Text(), err.Text(), Log()};
}

bool Holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool HoldsASecret(std::string_view text) { return Holds(text, kPassword) || Holds(text, kEncoded); }

/// A table repeats the width of its widest cell in each row, and JSON the names of its fields.
std::size_t MostWritten(std::size_t sent) { return std::size_t{64} * 1024 + 64 * sent; }

void Check(const Written& written, Form form, std::size_t sent, bool host_echoes) {
    fuzz::Require(written.status == 0 || written.status == 1 || written.status == 3);
    fuzz::Require(written.out.size() + written.err.size() <= MostWritten(sent));
    fuzz::Require(written.log.size() <= MostWritten(sent));
    fuzz::RequireShowable(written.out, fuzz::Tabs::kNo);
    fuzz::RequireShowable(written.err, fuzz::Tabs::kNo);
    fuzz::RequireShowable(written.log, fuzz::Tabs::kYes);
    fuzz::Require(!HoldsASecret(written.err));
    // What a host puts into its records is shown as its own.
    fuzz::Require(host_echoes || !HoldsASecret(written.out + written.log));
    fuzz::Require(form != Form::kJson || nlohmann::json::accept(written.out));
    fuzz::Require(form == Form::kTextAndLog || written.log.empty());
}

}  // namespace

void fuzz::Try(std::string_view input) {
    static ReplayingHost host;
    if (input.size() < 2) {
        return;
    }
    const Question* const question = Find(kQuestions, input[0]);
    const Way* const way = Find(kWays, input[1]);
    if (question == nullptr || way == nullptr || (input[0] == 'u' && way->form == Form::kJson)) {
        return;
    }
    const std::string_view replies = input.substr(2);
    host.Answer(SplitReplies(replies));
    const Written written = RunCommand(*question, *way, host.port());
    Check(written, way->form, host.Sent(), Holds(replies, kEchoPlace) || HoldsASecret(replies));
}
