#include "model/check_car.h"

#include "model/check_parts.h"

#include <algorithm>

Findings check_car(const CarDocument& car) {
    Findings findings;
    check_models(car, findings);
    check_paint_jobs(car, findings);
    check_cockpit(car, findings);
    check_parameters(car, findings);
    check_texts(car, findings);
    std::ranges::stable_sort(findings, {}, &Finding::severity);
    return findings;
}

std::size_t serious_findings(const Findings& findings) {
    return static_cast<std::size_t>(std::ranges::count(findings, Severity::serious, &Finding::severity));
}
