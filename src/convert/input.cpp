#include "convert/input.h"

#include "convert/refusal.h"

#include <utility>

namespace {

// What is wrong with a file, or an empty text.
std::string fault_of(const FileOutcome& outcome) {
    if (!outcome.succeeded())
        return std::string(error_text(outcome.code)) + (outcome.reason.empty() ? "" : " (" + outcome.reason + ")");
    switch (outcome.remark) {
    case FileRemark::none: return {};
    case FileRemark::no_car_data: return "No car data in it";
    default: return "Ends too early";
    }
}

} // namespace

void require(const FileOutcome& outcome) {
    if (const std::string fault = fault_of(outcome); !fault.empty()) throw Refusal(outcome.file + ": " + fault);
}

Bytes required_content(const std::string& path, std::size_t limit) {
    auto [outcome, content] = load_and_report(path, limit);
    require(outcome);
    return std::move(*content);
}
