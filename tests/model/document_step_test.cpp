#include "model/document_step.h"

#include "model/bitmap_table.h"
#include "model/new_car.h"
#include "model/parameters.h"

#include <gtest/gtest.h>
#include <random>

namespace {

class Step : public testing::Test {
protected:
    Step() { new_car(); }
    std::mt19937 random{11};

    std::size_t below(std::size_t end) { return random() % end; }

    // One of the things that a person may do, at random.
    void change() {
        SHAPEMODEL& model = CAR[below(CAR.size())].edit();
        switch (below(9)) {
        case 0: set_par_byte(static_cast<int>(below(776)), static_cast<std::uint8_t>(random())); break;
        case 1: CARNAME = "car " + std::to_string(below(50)); break;
        case 2: CARINFO = std::string(below(300), 'i'); break;
        case 3: POWERGEAR = static_cast<std::int32_t>(below(5)); break;
        case 4:
            for (SHAPEVERTEX& vertex : model.verts)
                vertex.x += 0.1;
            break;
        case 5: model.prims[below(512)].material[below(17)] = static_cast<std::uint16_t>(random()); break;
        case 6: CEXP[below(4)].edit().nverts = static_cast<std::uint16_t>(below(513)); break;
        case 7: PAINTJOBS = static_cast<std::uint8_t>(1 + below(17)); break;
        default: change_bitmaps(); break;
        }
        TITLENAME = CARNAME;
    }
    void change_bitmaps() {
        if (BITMAPS > 5) return drop_bitmap(static_cast<int>(1 + below(BITMAPS)));
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap.name = "b" + std::to_string(below(900));
        bitmap.pixels = Pixels(below(2000), static_cast<std::uint8_t>(random()));
    }
};

TEST_F(Step, BetweenEqualDocumentsIsEmpty) {
    const CarDocument copy = DOCUMENT;
    EXPECT_TRUE(DocumentStep(copy, DOCUMENT).empty());
    EXPECT_TRUE(DocumentStep().empty());
}

TEST_F(Step, TakenBackAndBroughtAgainGivesEitherDocumentExactly) {
    std::vector<CarDocument> states{DOCUMENT};
    std::vector<DocumentStep> steps;
    for (int k = 0; k < 400; ++k) {
        change();
        steps.emplace_back(states.back(), DOCUMENT);
        EXPECT_EQ(steps.back().empty(), DOCUMENT == states.back());
        states.push_back(DOCUMENT);
    }
    for (std::size_t k = steps.size(); k-- > 0;) {
        steps[k].take_back(DOCUMENT);
        ASSERT_EQ(DOCUMENT, states[k]) << k;
        ASSERT_EQ(TITLENAME, states[k].origin.title_name) << k;
    }
    for (std::size_t k = 0; k < steps.size(); ++k) {
        steps[k].bring(DOCUMENT);
        ASSERT_EQ(DOCUMENT, states[k + 1]) << k;
    }
}

TEST_F(Step, OfMovedVerticesIsSmall) {
    CAR[0].edit().nverts = 200;
    const CarDocument before = DOCUMENT;
    for (std::size_t i = 0; i < 200; ++i)
        CAR[0].edit().verts[i].x += 0.1 * static_cast<double>(i + 1);
    const DocumentStep step(before, DOCUMENT);
    EXPECT_LT(step.bytes(), 10'000u); // ten thousand of them stay below 100 MB
    EXPECT_GT(step.bytes(), 200 * sizeof(double) - 200);
}

TEST_F(Step, KeepsUnchangedBlocksShared) {
    CAR[1].edit().nverts = 7;
    const CarDocument before = DOCUMENT;
    CAR[0].edit().nverts = 3;
    DocumentStep(before, DOCUMENT).take_back(DOCUMENT);
    EXPECT_TRUE(CAR[1].is(before.models[1]));
}

} // namespace
