#include "ze/tools/Listener.h"

#include "ze/log/pp.h"

#include "support/LogCapture.h"

using ze::FIRE_DIRECT;
using ze::Listener;
using ze::NO_PAYLOAD;

TEST(Listener, duplicate_key_keeps_the_second_callback_and_is_logged) {
    test::LogCapture log;
    Listener<int> listener;
    int sum = 0;
    listener.append("key", [&sum](const int& value) { sum += value; });
    listener.append("key", [&sum](const int& value) { sum += 10 * value; });
    listener.fire_event(2, FIRE_DIRECT);
    EXPECT_EQ(sum, 20);
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Listener::append '$' already appended!"});
}
