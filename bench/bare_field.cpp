#include "bare_field.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <glm/geometric.hpp>

void bare_frame(BareField& field, float dt) {
    constexpr float EPS = std::numeric_limits<float>::epsilon();
    const float step = dt * field.velocity;
    if (0 >= dt || EPS >= step) {
        return;
    }
    field.travelled += step;
    const float radius = field.size * 0.5F;
    glm::vec2 from = field.pos;
    glm::vec2 before = from;
    glm::vec2 rest = field.dir * step;
    int guard = 0;
    while (glm::length(rest) > EPS) {
        if (++guard >= 9) {
            break;
        }
        before = from;
        const glm::vec2 to = from + rest;
        int type = 0;
        float best = 2;
        glm::vec2 pt{0, 0};

        const float dy = to.y - from.y;
        if (std::fabs(dy) >= EPS && rest.y != 0) {
            const float line = rest.y > 0 ? field.h * 0.5F - radius : field.h * -0.5F + radius;
            const float t = (line - from.y) / dy;
            if (0 <= t && t <= 1) {
                type = 1;
                best = t;
                pt = {(to.x - from.x) * t + from.x, dy * t + from.y};
            }
        }
        const float dx = to.x - from.x;
        if (std::fabs(dx) >= EPS && rest.x != 0) {
            const int paddle = rest.x < 0 ? 0 : 1;
            const glm::vec2 centre = field.paddles[paddle];
            const float line = paddle == 0 ? centre.x + field.paddleSize.x * 0.5F + radius
                                           : centre.x - field.paddleSize.x * 0.5F - radius;
            const float t = (line - from.x) / dx;
            const float y = dy * t + from.y;
            const float yMax = centre.y + field.paddleSize.y * 0.5F + radius;
            const float yMin = centre.y - field.paddleSize.y * 0.5F - radius;
            if (0 <= t && t <= 1 && yMin <= y && y <= yMax && (type == 0 || best > t)) {
                type = 2 + paddle;
                best = t;
                pt = {dx * t + from.x, y};
            }
        }
        if (type == 0) {
            field.pos = to;
            break;
        }
        const glm::vec2 way = rest * best;
        if (EPS >= glm::length(way)) {
            break;
        }
        rest = rest - way;
        field.pos = pt;
        ++field.hits;
        if (type == 1) {
            field.dir.y = -field.dir.y;
            rest.y = -rest.y;
        } else {
            const float centre = field.paddles[type - 2].y;
            const float rel =
                std::clamp((pt.y - centre) / (field.paddleSize.y * 0.5F), -1.0F, 1.0F);
            const glm::vec2 old = field.dir;
            field.dir.x = -old.x;
            if (std::fabs(rel) > 0.05F) {
                const float a = (rel > 0 ? rel - 0.05F : rel + 0.05F) / 0.95F;
                const float y = a * 0.85F + old.y;
                const float len = std::sqrt(y * y + old.x * old.x);
                field.dir = {-old.x / len, y / len};
            }
            rest = field.dir * glm::length(rest);
        }
        from = field.pos;
    }
    const bool left = -0.5F * field.w > field.pos.x + radius;
    const bool right = field.pos.x - radius > 0.5F * field.w;
    field.out = left || right;
    if (field.out) {
        field.travelled -= glm::length(field.pos - before);
    }
}
