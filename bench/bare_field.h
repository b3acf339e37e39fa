// The arithmetic of the frame step and nothing else: no log, no sound, no listener, no class. What
// the game's own step is measured against.
#pragma once

#include <glm/vec2.hpp>

struct BareField {
    glm::vec2 pos{0, 0};
    glm::vec2 dir{1, 0};
    float velocity = 0;
    float travelled = 0;
    float size = 10;
    float w = 800;
    float h = 400;
    glm::vec2 paddles[2] = {{-380, 0}, {380, 0}};
    glm::vec2 paddleSize{10, 80};
    unsigned hits = 0;
    bool out = false;
};

void bare_frame(BareField& field, float dt);
