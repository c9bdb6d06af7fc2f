#include "widgets/label_rows.h"

#include "support/play.h"

namespace {

class LabelRowsTest : public ScriptedTest {};

} // namespace

TEST_F(LabelRowsTest, StepARowAtATime) {
    LabelRows rows(screen(), 100, 200, 64);
    rows.row("Model", "Showroom");
    rows.row("Vertices", "300", 0xFFC8B400);
    rows.skip();
    rows.heading("- ARC -");
    rows.skip(2);
    rows.row("End", "90");
    EXPECT_TRUE(screen_shows(100, 64, "Model", 0xFFB4B4B4));
    EXPECT_TRUE(screen_shows(200, 64, "Showroom", 0xFF00B464));
    EXPECT_TRUE(screen_shows(100, 80, "Vertices", 0xFFB4B4B4));
    EXPECT_TRUE(screen_shows(200, 80, "300", 0xFFC8B400));
    EXPECT_TRUE(screen_shows(100, 112, "- ARC -", 0xFFFAFAFA));
    EXPECT_TRUE(screen_shows(100, 160, "End", 0xFFB4B4B4));
    EXPECT_TRUE(screen_shows(200, 160, "90", 0xFF00B464));
}
