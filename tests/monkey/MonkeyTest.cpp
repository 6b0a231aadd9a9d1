// The random user's walk.
//
//   MONKEY_SEED   another one is another walk
//   MONKEY_STEPS  how far it goes
//   MONKEY_FIRST  the step that it begins with: what went before may not have been needed
//   MONKEY_ALL    1: everything is checked after every step
#include <cstdio>

#include "monkey/RandomUser.h"

namespace {

int Number(const char* name, int otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

using Monkey = RandomUser;

TEST_F(Monkey, Walks) {
    const auto seed = static_cast<unsigned>(Number("MONKEY_SEED", 1));
    const int first = Number("MONKEY_FIRST", 1);
    const int last = Number("MONKEY_STEPS", 3000);
    const bool all = Number("MONKEY_ALL", 0) != 0;
    for (int step = first; step <= last && !HasFailure(); ++step) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
        Step(seed, step);
        if (!HasFailure()) Check(all ? 0 : step);
        constexpr int kFarApart = 1000;
        if (!HasFailure() && (step % kFarApart == 0 || step == last)) CheckHoldings();
    }
}

}  // namespace
