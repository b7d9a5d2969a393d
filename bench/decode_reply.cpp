// Decodes replies and nothing else, for profilers.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "replay_server.h"
#include "works.h"

namespace {

void DecodeReplies(std::size_t instances, int times) {
    const bench::ServerProcess server = bench::PackagesServer(instances);
    bench::DecodeWork work(server.port());
    for (int i = 0; i < times; ++i) {
        std::printf("%.6f s\n", work.Run(instances));
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App program("Decodes replies and nothing else; prints the processor time of each");
        std::size_t instances = 10'000;
        int times = 10;
        program.add_option("--instances", instances, "Instances of a reply")->capture_default_str();
        program.add_option("--times", times, "Replies to decode")->capture_default_str();
        CLI11_PARSE(program, argc, argv);
        DecodeReplies(instances, times);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "decode_reply: %s\n", e.what());
        return 1;
    }
}
