// What changed between two documents, small: the bytes that differ. A history is a row of these.
#pragma once

#include "model/document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class DocumentStep {
public:
    DocumentStep() = default;
    // From one document to the other. Both stay untouched.
    DocumentStep(const CarDocument& before, const CarDocument& after);

    bool empty() const;
    // Takes the step back, or brings it again. The document must be as it was after the step, or before it.
    void take_back(CarDocument& document) const;
    void bring(CarDocument& document) const;
    // Memory that the step holds, in bytes. Pixels that it changes count in full, shared or not.
    std::size_t bytes() const;

private:
    // A run of bytes of a block: before XOR after, which leads from either to the other.
    struct Run {
        std::uint32_t offset = 0;
        std::vector<std::byte> difference;
    };
    struct BlockChange {
        std::uint8_t model = 0; // index in models, then in explosions
        std::vector<Run> runs;
    };
    struct BitmapChange {
        std::uint8_t index = 0;
        BitmapRecord before, after;
    };
    template <typename T>
    using Change = std::pair<T, T>; // before, after; equal when nothing changed

    enum class Way : std::uint8_t { back, again };

    static std::vector<Run> runs_between(const void* before, const void* after, std::size_t size);
    static void flip(const std::vector<Run>& runs, void* block);
    void apply(CarDocument& document, Way way) const;

    std::vector<Run> par_;
    Change<std::string> name_, sign_name_, information_;
    Change<CarOrigin> origin_;
    Change<std::int32_t> power_gear_{};
    Change<std::uint8_t> paint_jobs_{}, bitmap_count_{};
    std::vector<BlockChange> models_;
    std::vector<BitmapChange> bitmaps_;
};
