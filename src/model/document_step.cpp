#include "model/document_step.h"

#include <numeric>
#include <span>
#include <type_traits>

static_assert(std::is_trivially_copyable_v<SHAPEMODEL>, "a model is changed byte by byte");

namespace {

// Equal bytes between two runs that cost less inside one run than a run of their own.
constexpr std::size_t smallest_gap = 24;

// All nine models under one number.
template <class Document>
auto& model_block(Document& document, std::size_t model) {
    return model < car_slots ? document.models[model] : document.explosions[model - car_slots];
}
constexpr std::size_t all_models = car_slots + explosion_models;

// Pixels that stay are the document's, whatever moves.
std::size_t pixel_bytes(const BitmapRecord& before, const BitmapRecord& after) {
    return before.pixels.is(after.pixels) ? 0 : before.pixels->size() + after.pixels->size();
}

} // namespace

std::vector<DocumentStep::Run> DocumentStep::runs_between(const void* before, const void* after, std::size_t size) {
    const std::span old_bytes(static_cast<const std::byte*>(before), size);
    const std::span new_bytes(static_cast<const std::byte*>(after), size);
    std::vector<Run> runs;
    std::size_t end = 0; // behind the last byte of the last run
    for (std::size_t at = 0; at < size; ++at) {
        if (old_bytes[at] == new_bytes[at]) continue;
        if (runs.empty() || at - end > smallest_gap) {
            runs.push_back({.offset = static_cast<std::uint32_t>(at), .difference = {}});
            end = at;
        }
        for (; end <= at; ++end)
            runs.back().difference.push_back(old_bytes[end] ^ new_bytes[end]);
    }
    for (Run& run : runs)
        run.difference.shrink_to_fit();
    return runs;
}

void DocumentStep::flip(const std::vector<Run>& runs, void* block) {
    auto* const bytes = static_cast<std::byte*>(block);
    for (const Run& run : runs)
        for (std::size_t i = 0; i < run.difference.size(); ++i)
            bytes[run.offset + i] ^= run.difference[i];
}

DocumentStep::DocumentStep(const CarDocument& before, const CarDocument& after)
    : par_(runs_between(before.par.data(), after.par.data(), before.par.size())), name_(before.name, after.name),
      sign_name_(before.sign_name, after.sign_name), information_(before.information, after.information),
      origin_(before.origin, after.origin), power_gear_(before.power_gear, after.power_gear),
      paint_jobs_(before.paint_jobs, after.paint_jobs), bitmap_count_(before.bitmap_count, after.bitmap_count) {
    for (std::size_t model = 0; model < all_models; ++model) {
        const auto &was = model_block(before, model), &is = model_block(after, model);
        if (!(was == is))
            models_.push_back({static_cast<std::uint8_t>(model), runs_between(&*was, &*is, sizeof(SHAPEMODEL))});
    }
    for (int i = 0; i <= max_bitmaps; ++i)
        if (!(before.bitmaps[i] == after.bitmaps[i]))
            bitmaps_.push_back({static_cast<std::uint8_t>(i), before.bitmaps[i], after.bitmaps[i]});
}

bool DocumentStep::empty() const {
    const auto unchanged = [](const auto& change) { return change.first == change.second; };
    return par_.empty() && models_.empty() && bitmaps_.empty() && unchanged(name_) && unchanged(sign_name_) &&
           unchanged(information_) && unchanged(power_gear_) && unchanged(paint_jobs_) && unchanged(bitmap_count_);
}

void DocumentStep::apply(CarDocument& document, Way way) const {
    const auto set = [way](auto& value, const auto& change) {
        value = way == Way::back ? change.first : change.second;
    };
    flip(par_, document.par.data());
    set(document.name, name_);
    set(document.sign_name, sign_name_);
    set(document.information, information_);
    set(document.origin, origin_);
    set(document.power_gear, power_gear_);
    set(document.paint_jobs, paint_jobs_);
    set(document.bitmap_count, bitmap_count_);
    for (const BlockChange& change : models_)
        flip(change.runs, &model_block(document, change.model).edit());
    for (const BitmapChange& change : bitmaps_)
        document.bitmaps[change.index] = way == Way::back ? change.before : change.after;
}

void DocumentStep::take_back(CarDocument& document) const { apply(document, Way::back); }
void DocumentStep::bring(CarDocument& document) const { apply(document, Way::again); }

std::size_t DocumentStep::bytes() const {
    const auto of_runs = [](std::size_t sum, const Run& run) { return sum + sizeof run + run.difference.capacity(); };
    std::size_t total = std::accumulate(par_.begin(), par_.end(), sizeof *this, of_runs);
    for (const Change<std::string>& text : {name_, sign_name_, information_})
        total += text.first.capacity() + text.second.capacity();
    for (const BlockChange& change : models_)
        total = std::accumulate(change.runs.begin(), change.runs.end(), total + sizeof change, of_runs);
    for (const BitmapChange& change : bitmaps_)
        total += sizeof change + pixel_bytes(change.before, change.after);
    return total;
}
