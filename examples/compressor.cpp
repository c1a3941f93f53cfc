// A two-stage compressor with an intercooler, in C++: sessions as objects, molar SI throughout, failures as exceptions.
#include <cmath>
#include <cstdio>
#include <tessarel/tessarel.hpp>

namespace {

constexpr double efficiency = 0.78;  // isentropic

/// The state behind a stage that compresses to `p` [Pa].
tessarel::State compressed(tessarel::Session& gas, const tessarel::State& inlet, double p) {
  const auto isentropic = gas.state("Ps", {.p = p, .s = inlet.s});
  return gas.state("Ph", {.p = p, .h = inlet.h + (isentropic.h - inlet.h) / efficiency});
}

}  // namespace

int main() {
  try {
    tessarel::Session gas({"methane", "ethane", "propane", "n-butane"}, {0.80, 0.10, 0.06, 0.04});
    const double p1 = 5e5, p3 = 45e5, p2 = std::sqrt(p1 * p3);
    const auto suction = gas.state("TP", {.t = 300, .p = p1});
    const auto stage1 = compressed(gas, suction, p2);
    const auto cooled = gas.state("TP", {.t = 308, .p = p2});
    const auto stage2 = compressed(gas, cooled, p3);
    std::printf("suction      %7.2f K %6.2f bar\n", suction.t, suction.p / 1e5);
    std::printf("first stage  %7.2f K %6.2f bar\n", stage1.t, stage1.p / 1e5);
    std::printf("intercooler  %7.2f K %6.2f bar, vapour %.4f mol/mol\n", cooled.t, cooled.p / 1e5, cooled.q);
    std::printf("second stage %7.2f K %6.2f bar\n", stage2.t, stage2.p / 1e5);
    const double work = stage1.h - suction.h + stage2.h - cooled.h;
    const double at_once = compressed(gas, suction, p3).h - suction.h;
    std::printf("work %.1f J/mol, in one stage %.1f J/mol\n", work, at_once);
    return work < at_once ? 0 : 1;
  } catch (const tessarel::Error& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
