#include "model/document.h"
#include "model/parameters.h"
#include "support/play.h"
#include "widgets/title.h"

namespace {

class Title : public ScriptedTest {};

TEST_F(Title, NamesTheCarThatWasLoadedLast) {
    TITLENAME = "Ard";
    show_title();
    EXPECT_EQ(window.title(), "Karosmit 1.0.4 - Ard");
}

TEST_F(Title, HasNoDashForACarWithoutName) {
    show_title();
    EXPECT_EQ(window.title(), "Karosmit 1.0.4");
}

TEST_F(Title, IsNotTheNameThatWasTypedSince) {
    TITLENAME = "Ard";
    CARNAME = "Bor";
    show_title();
    EXPECT_EQ(window.title(), "Karosmit 1.0.4 - Ard");
}

} // namespace
