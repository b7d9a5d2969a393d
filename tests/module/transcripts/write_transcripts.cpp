// Writes the transcript of every scenario into a folder, and removes all others from it.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "recording.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_transcripts FOLDER\n";
        return 2;
    }
    const std::string folder = argv[1];
    std::filesystem::create_directories(folder);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") {
            std::filesystem::remove(entry.path());
        }
    }
    for (const auto& scenario : transcripts::Scenarios()) {
        const std::string path = transcripts::FileOf(scenario, folder);
        std::ofstream file(path);
        file << transcripts::Record(scenario);
        if (!file.flush()) {
            std::cerr << path << " cannot be written\n";
            return 1;
        }
    }
    return 0;
}
