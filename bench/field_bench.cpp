// The frame step beside the same arithmetic written as a bare loop, and beside a step of Box2D with
// a bullet body in a field of the same shape.

#include "PlayingField.h"
#include "bare_field.h"
#include "vork2d/v5/PlayStats.h"

#include <benchmark/benchmark.h>
#include <box2d/box2d.h>

namespace {

using vork2d::v5::PlayField;
using vork2d::v5::playStats;

constexpr float DT = 0.016F;

struct Flight {
    glm::vec2 pos, dir;
    float velocity;
    float dt;
    unsigned hits;
};

const Flight FREE{{-20, 10}, {0.97014254F, 0.24253564F}, 160, DT, 0};
// From paddle to paddle through the walls: four walls, three paddles.
const Flight SEVEN_BOUNCES{{-370, 0}, {0.88465F, 0.46624F}, 3100, 1, 7};

void frame_step(benchmark::State& state, const Flight& flight) {
    PlayingField game;
    PlayField& field = game.field;
    playStats = {};
    for (auto _ : state) {
        field.ball.pos = flight.pos;
        field.ball.dir = flight.dir;
        field.ball.velocity = flight.velocity;
        benchmark::ClobberMemory();
        field.next_frame(flight.dt);
        benchmark::ClobberMemory();
    }
    if (playStats.all_hits() != flight.hits * state.iterations()) {
        state.SkipWithError("another flight than planned");
    }
}

void bare_step(benchmark::State& state, const Flight& flight) {
    BareField field;
    benchmark::DoNotOptimize(&field);
    for (auto _ : state) {
        field.pos = flight.pos;
        field.dir = flight.dir;
        field.velocity = flight.velocity;
        benchmark::ClobberMemory();
        bare_frame(field, flight.dt);
        benchmark::ClobberMemory();
    }
    if (field.hits != flight.hits * state.iterations()) {
        state.SkipWithError("another flight than planned");
    }
}

// A whole rally, from paddle to paddle through the walls, served anew before rounding has grown.

constexpr int FRAMES_OF_A_RALLY = 1000;
const Flight SERVE{{-370, 0}, {0.88465F, 0.46624F}, 160, DT, 0};

void rally(benchmark::State& state) {
    PlayingField game;
    PlayField& field = game.field;
    field.ball.velocity = SERVE.velocity;
    int frame = 0;
    for (auto _ : state) {
        if (frame++ % FRAMES_OF_A_RALLY == 0) {
            field.ball.pos = SERVE.pos;
            field.ball.dir = SERVE.dir;
        }
        field.next_frame(SERVE.dt);
        benchmark::ClobberMemory();
    }
}

/// The field in metres, a hundred units each: walls, paddles, and the ball as a bullet.
class BoxField {
public:
    BoxField() {
        add_wall(0, 2.05F, 4, 0.05F);
        add_wall(0, -2.05F, 4, 0.05F);
        add_wall(-3.8F, 0, 0.05F, 0.4F);
        add_wall(3.8F, 0, 0.05F, 0.4F);
        b2BodyDef def;
        def.type = b2_dynamicBody;
        def.bullet = true;
        def.allowSleep = false;
        def.fixedRotation = true;
        ball = world.CreateBody(&def);
        b2PolygonShape shape;
        shape.SetAsBox(0.05F, 0.05F);
        b2FixtureDef fixture;
        fixture.shape = &shape;
        fixture.density = 1;
        fixture.restitution = 1;
        fixture.friction = 0;
        ball->CreateFixture(&fixture);
    }

    void serve() {
        ball->SetTransform({SERVE.pos.x / 100, SERVE.pos.y / 100}, 0);
        ball->SetLinearVelocity(
            {SERVE.dir.x * SERVE.velocity / 100, SERVE.dir.y * SERVE.velocity / 100});
    }

    void step() { world.Step(DT, 8, 3); }

private:
    void add_wall(float x, float y, float halfWidth, float halfHeight) {
        b2BodyDef def;
        def.position.Set(x, y);
        b2PolygonShape shape;
        shape.SetAsBox(halfWidth, halfHeight);
        world.CreateBody(&def)->CreateFixture(&shape, 0)->SetFriction(0);
    }

    b2World world{{0, 0}};
    b2Body* ball = nullptr;
};

void rally_of_box2d(benchmark::State& state) {
    BoxField field;
    int frame = 0;
    for (auto _ : state) {
        if (frame++ % FRAMES_OF_A_RALLY == 0) {
            field.serve();
        }
        field.step();
    }
}

void free_flight(benchmark::State& state) {
    frame_step(state, FREE);
}
void free_flight_bare(benchmark::State& state) {
    bare_step(state, FREE);
}
void bounces(benchmark::State& state) {
    frame_step(state, SEVEN_BOUNCES);
}
void bounces_bare(benchmark::State& state) {
    bare_step(state, SEVEN_BOUNCES);
}

BENCHMARK(free_flight)->Name("frame_step/ours");
BENCHMARK(free_flight_bare)->Name("frame_step/peer");
BENCHMARK(bounces)->Name("frame_step_7_bounces/ours");
BENCHMARK(bounces_bare)->Name("frame_step_7_bounces/peer");
BENCHMARK(rally)->Name("frame_step_of_a_rally/ours");
BENCHMARK(rally_of_box2d)->Name("frame_step_of_a_rally/peer");

}  // namespace
