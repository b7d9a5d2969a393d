#include "cli/fleet_outputs.h"

#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <system_error>

#include "cli/command_error.h"
#include "cli/section_choice.h"
#include "cli/text_style.h"
#include "fleet/csv_folder.h"
#include "fleet/host_table.h"
#include "fleet/ndjson_output.h"

namespace command {

using fleet::DocumentSink;
using fleet::HostEntry;

namespace {

std::string FormatOf(const FleetOptions& options) {
    if (!options.format.empty()) {
        return options.format;
    }
    const bool is_for_people =
        options.output.empty() && options.folder.empty() && isatty(STDOUT_FILENO) == 1;
    return is_for_people ? "text" : options.folder.empty() ? "ndjson" : "csv";
}

/// Throws UsageError for outputs that do not go together.
void CheckOutputs(const FleetOptions& options, const std::string& format) {
    if (!options.output.empty() && format != "ndjson") {
        throw UsageError("--output takes the documents as ndjson; leave out --format " + format);
    }
    if (options.folder.empty() == (format == "csv")) {
        throw UsageError(options.folder.empty()
                             ? "--format csv is files of their own; name a folder with --output-dir"
                             : "--output-dir is for --format csv; leave out one of them");
    }
}

std::vector<const schema::RecordKind*> KindsOf(const FleetOptions& options) {
    std::vector<const schema::RecordKind*> kinds;
    for (const inventory::Section& section : ChosenSections(options.sections)) {
        kinds.insert(kinds.end(), section.kinds.begin(), section.kinds.end());
    }
    return kinds;
}

}  // namespace

FleetOutputs::FleetOutputs(const FleetOptions& options, const fleet::PastRun& past,
                           const std::vector<HostEntry>& hosts, FleetProgress& progress,
                           std::function<void()> failed)
    : note_problem_([this, failed = std::move(failed)](const std::string& problem) {
          problem_ = problem;
          failed();
      }) {
    if (!options.output.empty()) {
        file_ = std::make_unique<OutputFile>(options, past);
    }
    sink_ = MakeSink(options, hosts, progress);
}

std::unique_ptr<DocumentSink> FleetOutputs::MakeSink(const FleetOptions& options,
                                                     const std::vector<HostEntry>& hosts,
                                                     FleetProgress& progress) {
    const std::string format = FormatOf(options);
    CheckOutputs(options, format);
    if (format == "text") {
        auto table = std::make_unique<fleet::HostTable>(
            hosts, TextStyleOf(STDOUT_FILENO).columns, std::cout,
            [&progress](const auto& write) { progress.Around(write); });
        table->WriteHeadings();
        return table;
    }
    if (format == "csv") {
        try {
            std::filesystem::create_directories(options.folder);
            return std::make_unique<fleet::CsvFolder>(options.folder, KindsOf(options),
                                                      note_problem_);
        } catch (const std::system_error& error) {
            throw UsageError("cannot write into --output-dir " + options.folder + ": " +
                             error.code().message());
        }
    }
    return std::make_unique<fleet::NdjsonOutput>(file_ ? file_->descriptor() : STDOUT_FILENO,
                                                 note_problem_);
}

void FleetOutputs::Take(const HostEntry& entry, const inventory::Document& document) {
    sink_->Take(entry, document);
    summary_.Add(entry, document);
}

void FleetOutputs::Finish() {
    if (!problem_.empty()) {
        throw CommandError(kExitPartly,
                           "the documents could not be written to their end: " + problem_);
    }
    if (file_) {
        file_->Finish();
    }
}

}  // namespace command
