#include "fleet/csv_folder.h"

#include <cerrno>
#include <sstream>
#include <system_error>

#include "outputs/csv/csv_output.h"

namespace fleet {

CsvFolder::CsvFolder(const std::string& folder, const std::vector<const schema::RecordKind*>& kinds,
                     std::function<void(const std::string&)> failed)
    : failed_(std::move(failed)) {
    for (const schema::RecordKind* kind : kinds) {
        files_.emplace_back(kind,
                            Opened(folder + "/" + kind->name + ".csv", outputs::CsvHeader(*kind)));
    }
    failures_ = Opened(folder + "/failures.csv", outputs::CsvFailuresHeader());
}

void CsvFolder::Take(const HostEntry& /*entry*/, const inventory::Document& document) {
    for (auto& [kind, file] : files_) {
        std::ostringstream rows;
        outputs::AppendCsv(document, *kind, rows);
        Append(file, rows.str());
    }
    std::ostringstream rows;
    outputs::AppendCsvFailures(document, rows);
    Append(failures_, rows.str());
}

std::ofstream CsvFolder::Opened(const std::string& path, const std::string& header) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << header << std::flush;
    if (!file) {
        throw std::system_error(errno, std::system_category(), path);
    }
    return file;
}

void CsvFolder::Append(std::ofstream& file, const std::string& rows) {
    if (!has_failed_ && !(file << rows << std::flush)) {
        has_failed_ = true;
        failed_(std::system_category().message(errno));
    }
}

}  // namespace fleet
