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

TEST(Allocation, TheCounterCounts) {
  EXPECT_GT(count([] { ::operator delete(::operator new(10)); }), 0);
}

TEST(Allocation, NoneAfterSelection) {
  for (const host::Case& fluid : host::cases()) {
    SCOPED_TRACE(fluid.title);
    ASSERT_EQ(host::select(fluid.names, fluid.z), "No errors");
    double v = 0, h = 0, s = 0, u = 0;
    for (const int phase : {1, 2}) {
      const double t = phase == 1 ? fluid.t_liquid : fluid.t_vapour, p = phase == 1 ? fluid.p_liquid : fluid.p_vapour;
      EXPECT_EQ(count([&] { tessarel::calc_vrho_module::calc_v(t, p, phase, v); }), 0);
      EXPECT_EQ(count([&] { tessarel::calc_hsu_module::calc_hsu(t, p, v, h, s, u); }), 0);

      std::array<double, 20> x{}, y{}, lnphi{};
      std::array<double, 8> rest{};
      std::array<char, 100> err{};
      for (const char* spec : {"TP Lph", "TP Vph", "Ph Lph", "Ps Vph", "hs Vph", "vu Vph", "Ts Lph", "no Vph"}) {
        double call_t = t, call_p = p, call_v = v, call_u = u, call_h = h, call_s = s;
        const std::int32_t order = 3;
        EXPECT_EQ(count([&] {
                    tessarel_tmdprop(spec, &order, &call_t, &call_p, &call_v, &call_u, &call_h, &call_s, &rest[0],
                                     &rest[1], &rest[2], &rest[3], &rest[4], &rest[5], &rest[6], &rest[7], x.data(),
                                     y.data(), lnphi.data(), err.data(), 6, err.size());
                  }),
                  0)
            << spec;
      }
    }
  }
}

}  // namespace
