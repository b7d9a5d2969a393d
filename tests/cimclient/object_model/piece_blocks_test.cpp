// Memory that is cut from blocks.
#include "object_model/piece_blocks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <thread>

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/Pieces.h"

namespace {

using namespace Pegasus;
using detail::PieceBlocks;

constexpr std::size_t kSizes[] = {1, 7, 8, 24, 100, 1000, 1016, 1017, 5000, 100'000};

/// Pieces of many sizes, filled so that one that reaches into another is noticed.
class FilledPieces {
public:
    FilledPieces() {
        for (int round = 0; round < 50; ++round) {
            for (const std::size_t size : kSizes) {
                void* const piece = detail::TakePiece(size);
                std::memset(piece, Mark(), size);
                pieces_.push_back({piece, size});
            }
        }
    }
    ~FilledPieces() {
        for (const Piece& piece : pieces_) {
            detail::ReturnPiece(piece.memory);
        }
    }
    FilledPieces(const FilledPieces&) = delete;
    FilledPieces& operator=(const FilledPieces&) = delete;

    void ExpectIntact() const {
        int mark = 0;
        for (const Piece& piece : pieces_) {
            const std::string expected(piece.size, static_cast<char>(mark++ % 251));
            EXPECT_EQ(std::memcmp(piece.memory, expected.data(), piece.size), 0) << piece.size;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece.memory) % 8, 0U) << piece.size;
        }
    }

private:
    struct Piece {
        void* memory;
        std::size_t size;
    };
    int Mark() const { return static_cast<int>(pieces_.size() % 251); }

    std::vector<Piece> pieces_;
};

TEST(PieceBlocks, PiecesAreApartAndAligned) {
    const PieceBlocks blocks;
    FilledPieces().ExpectIntact();
}

TEST(PieceBlocks, PiecesWithoutBlocksAreTheSame) { FilledPieces().ExpectIntact(); }

TEST(PieceBlocks, PiecesOutliveTheirBlocksScope) {
    std::optional<PieceBlocks> blocks(std::in_place);
    const FilledPieces pieces;
    blocks.reset();
    FilledPieces().ExpectIntact();
    pieces.ExpectIntact();
}

TEST(PieceBlocks, ScopesNest) {
    const PieceBlocks outer;
    const FilledPieces before;
    {
        const PieceBlocks inner;
        FilledPieces().ExpectIntact();
    }
    const FilledPieces after;
    before.ExpectIntact();
    after.ExpectIntact();
}

TEST(PieceBlocks, ObjectsMayEndOnAnotherThreadWhileMoreAreMade) {
    for (int round = 0; round < 20; ++round) {
        const PieceBlocks blocks;
        Array<CIMInstance> instances;
        for (int i = 0; i < 200; ++i) {
            CIMInstance instance(CIMName("Class"));
            instance.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("a text"))));
            instances.append(instance);
        }
        std::thread other([taken = std::move(instances)]() mutable { taken.clear(); });
        FilledPieces().ExpectIntact();
        other.join();
    }
}

}  // namespace
