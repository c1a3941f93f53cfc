// No heap allocation once a fluid is selected: property calls run in the innermost loop of a host.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "interface/host.hpp"

namespace {
std::atomic<long> allocations{0};

void* counted(std::size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
}  // namespace

void* operator new(std::size_t size) {
  return counted(size);
}
void* operator new[](std::size_t size) {
  return counted(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace {

/// Allocations during `body`.
template <class Body>
long count(Body&& body) {
  const long before = allocations;
  body();
  return allocations - before;
}

TEST(Allocation, NoneAfterSelection) {
  EXPECT_GT(count([] { ::operator delete(::operator new(10)); }), 0);  // the counter counts
  host::at_states(0, [](const char* spec, const host::Call& state, const host::Case&, double mass) {
    const host::Call inputs = host::to_inputs(state, mass);
    const tessarel::eos::Fluid f = host::session().fluid();
    double v = 0, h = 0, s = 0, u = 0;
    EXPECT_EQ(count([&] {
                calc_v(f.eos, f.n, f.z, inputs.t, inputs.p, spec[3] == 'L' ? 1 : 2, v);
                calc_hsu(f.eos, f.n, f.z, inputs.t, inputs.p, v, h, s, u);
              }),
              0);
    std::array<char, 100> err{};
    for (const char* pair : {"TP Lph", "TP Vph", "Ph Lph", "Ps Vph", "hs Vph", "vu Vph", "Ts Lph", "no Vph"}) {
      host::Call call = inputs;
      EXPECT_EQ(count([&] { call.raw(pair, 6, 3, &call.v, err.data(), err.size()); }), 0) << pair;
    }
  });
}

}  // namespace
