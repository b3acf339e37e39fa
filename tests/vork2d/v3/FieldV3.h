// A field of the third generation whose timer stands still.
#pragma once

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v3/PlayField.h"

namespace test {

class FieldV3 : public testing::Test {
protected:
    FieldV3() {
        log.ignore("Listener::~Listener@");
        field.timer.stop();
        vork2d::v3::playStats = {};
        log.clear();
    }

    void fly(glm::vec2 pos, glm::vec2 dir, float velocity) {
        field.ball.pos = pos;
        field.ball.dir = dir;
        field.ball.velocity = velocity;
        field.state = vork2d::v3::PlayField::STATE_FLYING;
    }

    LogCapture log;
    vork2d::v3::PlayField field{800, 400};
};

}  // namespace test
