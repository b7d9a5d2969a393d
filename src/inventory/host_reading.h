// Reads the sections of one host into a document.
#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "inventory/document.h"
#include "inventory/sections.h"

namespace inventory {

/// Makes a document step by step: as soon as it is made, with what connecting met, with each
/// section, and at the end.
class HostReading {
public:
    /// The time that the document gives counts from `begun`.
    HostReading(std::string host, std::uint16_t port, std::string transport,
                std::chrono::steady_clock::time_point begun);

    /// Notes what connecting met; its consequences come up again in what is read.
    void NoteConnecting(const Zentar::FailureList& failures);

    /// Reads the sections, after calling `before_each` with each and its number, from 1. When
    /// memory runs out, what was read stays, and the rest is failed.
    void Read(Zentar::Agentless::Kalvex& host, std::span<const Section> sections,
              const std::function<void(const Section&, std::size_t)>& before_each = {});

    /// Notes sections as not asked for, and why.
    void Skip(std::span<const Section> sections, DocumentFailure reason);

    /// Whether a section was read, at least in part.
    bool HasRead() const;

    bool RanOutOfMemory() const { return ran_out_of_memory_; }

    /// With its status and its time; the reading is over.
    Document Finish(bool is_strict = false);

private:
    /// Each distinct one once.
    void Note(const Zentar::FailureList& met,
              const std::function<std::string(const Zentar::Failure&)>& section_of);
    void ReadSection(Zentar::Agentless::Kalvex& host, const Section& section);

    const std::chrono::steady_clock::time_point begun_;
    Document document_;
    bool ran_out_of_memory_ = false;
};

}  // namespace inventory
