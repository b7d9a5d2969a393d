#include "cli/output_options.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <functional>
#include <iostream>
#include <system_error>

#include "cli/command_error.h"
#include "cli/text_style.h"
#include "outputs/csv/csv_output.h"
#include "outputs/json/json_output.h"
#include "outputs/text/text_output.h"
#include "outputs/whole_file.h"

namespace command {

namespace {

using inventory::Document;
using schema::RecordKind;

constexpr const char* kFailuresFile = "failures.csv";
constexpr int kNoTerminal = -1;

std::vector<const RecordKind*> KindsOf(const std::vector<inventory::Section>& sections) {
    std::vector<const RecordKind*> kinds;
    for (const inventory::Section& section : sections) {
        kinds.insert(kinds.end(), section.kinds.begin(), section.kinds.end());
    }
    return kinds;
}

void WriteCsv(const Document& document, const RecordKind& kind, std::ostream& out) {
    out << outputs::CsvHeader(kind);
    outputs::AppendCsv(document, kind, out);
}

void WriteCsvFailures(const Document& document, std::ostream& out) {
    out << outputs::CsvFailuresHeader();
    outputs::AppendCsvFailures(document, out);
}

void WriteDocument(const Document& document, const std::string& format, int terminal,
                   std::ostream& out) {
    if (format == "json") {
        outputs::WriteJson(document, out, outputs::JsonLayout::kIndented);
        out << '\n';
    } else if (format == "csv") {
        WriteCsv(document, document.sections.front().kind(), out);
    } else {
        outputs::WriteText(document, TextStyleOf(terminal), out);
    }
    out.flush();
}

void WriteFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    try {
        outputs::WholeFile file(path);
        write(file.stream());
        file.Commit();
    } catch (const std::system_error& error) {
        throw std::system_error(error.code(), path);
    }
}

std::string PathIn(const std::string& folder, const std::string& name) {
    return (std::filesystem::path(folder) / name).string();
}

void WriteFolder(const Document& document, const std::string& folder) {
    std::filesystem::create_directories(folder);
    for (const inventory::SectionResult& section : document.sections) {
        const RecordKind& kind = section.kind();
        WriteFile(PathIn(folder, kind.name + std::string(".csv")),
                  [&](std::ostream& out) { WriteCsv(document, kind, out); });
    }
    WriteFile(PathIn(folder, kFailuresFile),
              [&](std::ostream& out) { WriteCsvFailures(document, out); });
}

void CheckFolder(const OutputOptions& options) {
    if (options.format != "csv") {
        throw UsageError(
            "--output-dir is for lists in files of their own; add --format csv, or "
            "use --output FILE");
    }
    if (!options.file.empty()) {
        throw UsageError("--output and --output-dir exclude each other; leave out one");
    }
    std::error_code error;
    std::filesystem::create_directories(options.folder, error);
    const std::string why =
        error ? error.message() : outputs::WhyNotWritable(PathIn(options.folder, kFailuresFile));
    if (!why.empty()) {
        throw UsageError("cannot write into the folder " + options.folder + ": " + why +
                         "; give --output-dir another one");
    }
}

void CheckFile(const OutputOptions& options) {
    const std::string why = outputs::WhyNotWritable(options.file);
    if (!why.empty()) {
        throw UsageError("cannot write the file " + options.file + ": " + why +
                         "; give --output a path that can be written");
    }
}

/// A CSV file has one table.
void CheckOneTable(const std::vector<inventory::Section>& sections) {
    const std::size_t tables = KindsOf(sections).size();
    if (tables > 1) {
        throw UsageError("--format csv prints one list, and these are " + std::to_string(tables) +
                         "; add --output-dir DIR for a file each, or name one section that is one "
                         "list");
    }
}

}  // namespace

void AddOutputOptions(CLI::App& app, OutputOptions& options) {
    app.add_option("--format", options.format,
                   "text for people, json and csv for programs; csv holds one list")
        ->check(CLI::IsMember({"text", "json", "csv"}).description(""))
        ->type_name("text|json|csv")
        ->capture_default_str();
    app.add_option("--output", options.file, "File to write, whole or not at all [standard output]")
        ->type_name("FILE");
    app.add_option("--output-dir", options.folder,
                   "With --format csv: folder for a file of each list and one of failures, made "
                   "when it is not there")
        ->type_name("DIR");
}

void CheckOutputOptions(const OutputOptions& options,
                        const std::vector<inventory::Section>& sections) {
    if (!options.folder.empty()) {
        CheckFolder(options);
        return;
    }
    if (options.format == "csv") {
        CheckOneTable(sections);
    }
    if (!options.file.empty()) {
        CheckFile(options);
    }
}

std::string WriteOutput(const Document& document, const OutputOptions& options) {
    try {
        if (!options.folder.empty()) {
            WriteFolder(document, options.folder);
        } else if (!options.file.empty()) {
            WriteFile(options.file, [&](std::ostream& out) {
                WriteDocument(document, options.format, kNoTerminal, out);
            });
        } else {
            WriteDocument(document, options.format, STDOUT_FILENO, std::cout);
        }
        return {};
    } catch (const std::system_error& error) {
        return "the inventory could not be written: " + std::string(error.what()) +
               "; what was there before is unchanged";
    }
}

}  // namespace command
