#include "widgets/title.h"
#include "model/document.h"

#include "base/version.h"
#include "model/parameters.h"
#include "window/window.h"

std::string title_for(const std::string& car_name) {
    const std::string title(program_title);
    return car_name.empty() ? title : title + " - " + car_name;
}

void show_title() {
    const std::string title = title_for(TITLENAME);
    if (title != window_title()) set_window_title(title);
}
