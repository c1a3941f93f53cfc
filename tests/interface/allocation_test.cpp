// No heap allocation once a fluid is selected: property calls run in the innermost loop of a host.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "interface/host.hpp"
#include "tessarel/routines.h"

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

TEST(Allocation, NoneInAFlash) {
  for (const auto& names :
       {std::vector<std::string>{"methane", "n-butane", "propane"}, {"water", "n-hexane", "methanol"}}) {
    ASSERT_EQ(host::select(names, {0.4, 0.3, 0.3}), "No errors");
    std::array<char, 100> err{};
    std::array<double, 20> x{}, y{};
    std::array<double, 100> d[6];
    const std::int32_t order = 3;
    double beta = 0, t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 0;
    for (const double temperature : {250.0, 320.0, 450.0})
      for (const double pressure : {1e5, 30e5}) {
        EXPECT_EQ(count([&] {
                    x[0] = 0;
                    tessarel_calc_pt_flash(&temperature, &pressure, x.data(), y.data(), &beta, err.data(), err.size());
                    tessarel_flash_sensitivity(&temperature, &pressure, &beta, &v, &h, &s, d[0].data(), d[1].data(),
                                               d[2].data(), d[3].data(), d[4].data(), d[5].data(), err.data(),
                                               err.size());
                    double* out = d[0].data();
                    tessarel_derived(y.data(), &temperature, &v, out, out + 1, out + 2, out + 3, out + 4, out + 5,
                                     err.data(), err.size());
                    out[0] = temperature, out[1] = pressure;
                    tessarel_tmdprop_allphase("TP all", &order, out, out + 1, out + 2, out + 5, out + 8, out + 11,
                                              out + 14, out + 15, out + 18, out + 21, out + 24, out + 27, out + 30,
                                              out + 33, x.data(), y.data(), d[1].data(), err.data(), 6, err.size());
                    tessarel_calc_bubble_p(&temperature, y.data(), &p, err.data(), err.size());
                    for (const std::int32_t mode : {1, 2, 3, 4, 5}) {
                      const double a = mode == 4 ? temperature : mode == 5 ? v : pressure;
                      const double b = mode == 1 ? temperature : mode == 2 ? h : mode == 3 ? s : mode == 4 ? v : u;
                      tessarel_calc_ab_flash(&mode, &a, &b, &t, &p, &v, &u, &h, &s, &q, x.data(), y.data(), err.data(),
                                             err.size());
                    }
                  }),
                  0);
      }
  }
}

// With the phase boundary, quick routes and searches, states that are there and such that are not.
TEST(Allocation, NoneInTheStateSolvers) {
  for (const auto& names : {std::vector<std::string>{"propane"}, {"methane", "n-butane", "propane"}}) {
    ASSERT_EQ(host::select(names, names.size() == 1 ? std::vector{1.0} : std::vector{0.4, 0.3, 0.3}), "No errors");
    std::array<char, 100> err{};
    for (const double t : {250.0, 300.0, 450.0}) {
      host::Call known = host::at_tp("TP", t, 20e5);
      const host::Call inputs =
          host::to_inputs(known, host::molar_mass(names.size() == 1 ? std::vector{1.0} : std::vector{0.4, 0.3, 0.3}));
      for (const std::string pair :
           {"TP", "Tv", "Tv_old", "vP", "Ts", "vu", "vh", "vs", "Pu", "Ph", "Ps", "hs", "Pq", "Tq", "vq", "Pm", "Tm"})
        for (const double factor : {1.0, 0.3}) {
          host::Call call = inputs;
          call.q = 0.4;
          for (double host::Call::*f : {&host::Call::p, &host::Call::v, &host::Call::s}) call.*f *= factor;
          EXPECT_EQ(count([&] { call.raw(pair.data(), pair.size(), 0, &call.v, err.data(), err.size()); }), 0) << pair;
        }
    }
  }
}

}  // namespace
