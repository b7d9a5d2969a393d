// Tries every input of a folder once, as a test.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "target.h"

namespace {

std::string FileText(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace

int main(int argc, char** argv) {
    int tried = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            // Before the input is tried, so that it is known when the process ends.
            std::fprintf(stderr, "%s\n", file.path().c_str());
            fuzz::Try(FileText(file.path()));
            ++tried;
        }
    }
    std::printf("%d inputs\n", tried);
    return tried > 0 ? 0 : 1;
}
