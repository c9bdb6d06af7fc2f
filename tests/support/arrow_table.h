// What the cursor keys of the 3D editor do, as people know it: a row for each key and wireframe view.
#pragma once

#include <array>

enum class Arrow { right, left, up, down };
// Words of the parameters: half the width, the height, half the length of the collision box.
enum class BoxWord { width = 200, height = 202, length = 204 };

struct ArrowEffect {
    Arrow key;
    int view; // 1 top, 2 front, 3 side
    // Along x, y and z, or width, tyre and rim radius, as parts of the snap.
    std::array<double, 3> car, wheels, size;
    BoxWord word;
    int step;
};

constexpr ArrowEffect arrow_table[] = {
    {Arrow::right, 1, {1, 0, 0}, {1, 0, 0}, {0.25, 0, 0}, BoxWord::width, 1},
    {Arrow::right, 2, {1, 0, 0}, {1, 0, 0}, {0.25, 0, 0}, BoxWord::width, 1},
    {Arrow::right, 3, {0, 1, 0}, {0, 0.25, 0}, {0, 0, 0.25}, BoxWord::length, 1}, // ODDITY wheel-right-quarter
    {Arrow::left, 1, {-1, 0, 0}, {-1, 0, 0}, {-0.25, 0, 0}, BoxWord::width, -1},
    {Arrow::left, 2, {-1, 0, 0}, {-1, 0, 0}, {-0.25, 0, 0}, BoxWord::width, -1},
    {Arrow::left, 3, {0, -1, 0}, {0, -1, 0}, {0, 0, -0.25}, BoxWord::length, -1},
    {Arrow::up, 1, {0, 1, 0}, {0, 1, 0}, {0, 0.25, 0.25}, BoxWord::length, 1},
    {Arrow::up, 2, {0, 0, 1}, {0, 0, 1}, {0, 0.25, 0}, BoxWord::height, 1},
    {Arrow::up, 3, {0, 0, 1}, {0, 0, 1}, {0, 0.25, 0}, BoxWord::height, 1},
    {Arrow::down, 1, {0, -1, 0}, {0, -1, 0}, {0, -0.25, -0.25}, BoxWord::length, -1},
    {Arrow::down, 2, {0, 0, -1}, {0, 0, -1}, {0, -0.25, 0}, BoxWord::height, -1},
    {Arrow::down, 3, {0, 0, -1}, {0, 0, -1}, {0, -0.25, 0}, BoxWord::height, -1},
};

// The last value of a word that a key reaches.
constexpr int arrow_bound(BoxWord word, int step) {
    if (step < 0) return 1;
    return word == BoxWord::width ? 50 : word == BoxWord::height ? 40 : 80;
}
