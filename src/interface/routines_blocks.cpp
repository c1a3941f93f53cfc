// Exports of the prepare and assemble split: the blocks of a state in an opaque record, and values made from them.
#include <variant>
#include <vector>

#include "eos/composition.hpp"
#include "interface/routines_support.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using eos::CompressibilityBlocks, eos::HelmholtzBlocks;
using numerics::Taylor;

namespace {

using T1 = Taylor<1, 1>;
using T2 = Taylor<1, 2>;
using T3 = Taylor<1, 3>;

/// Composition derivatives up to `order`, their numbers with first derivatives by t or rho where the member has them.
template <class S>
struct CompositionBlocks {
  int order = 0;
  S a;
  std::array<std::vector<S>, 3> arrays;
};

/// The variable of the Taylor numbers in a record.
enum class By { nothing, t, rho, t_rho };

}  // namespace

struct tessarel_blocks {
  int n = 0;
  By by = By::nothing;
  bool of_z = false;  ///< blocks of z; by composition: those of a that z is made from
  std::variant<std::monostate, HelmholtzBlocks<double>, HelmholtzBlocks<T1>, HelmholtzBlocks<T2>, HelmholtzBlocks<T3>,
               CompressibilityBlocks<double>, CompressibilityBlocks<T1>, CompressibilityBlocks<T2>,
               CompressibilityBlocks<T3>, CompressibilityBlocks<Taylor<2, 2>>, CompositionBlocks<double>,
               CompositionBlocks<T1>>
      content;
};

namespace {

/// The number for t or rho: with derivatives up to K when `carries`.
template <class N, bool carries>
auto seed(double value, int v = 0) {
  if constexpr (carries)
    return numerics::variable<N>(value, v);
  else
    return value;
}

/// Prepares the blocks of a (z) at t and rho, with derivatives of type N by what `by` says.
template <bool z, class N, By by>
int prepare_scalar(int n, const double* x, int ipure, double t, double rho, tessarel_blocks& blocks) {
  constexpr bool by_t = by == By::t || by == By::t_rho, by_rho = by == By::rho || by == By::t_rho;
  const Arena::Frame frame(eos::arena);
  const auto temperature = seed<N, by_t>(t);
  const auto density = seed<N, by_rho>(rho, by_t ? 1 : 0);
  eos::MixtureState<std::remove_const_t<decltype(temperature)>> state;
  eos::prepare(state, n, x, ipure, temperature);
  blocks.n = n, blocks.by = by, blocks.of_z = z;
  if constexpr (z) {
    auto& record = blocks.content.emplace<CompressibilityBlocks<N>>();
    eos::prepare_z_blocks(state, density, record);
    return record.status;
  } else {
    auto& record = blocks.content.emplace<HelmholtzBlocks<N>>();
    eos::prepare_a_blocks(state, density, eos::site_tolerance(rho), record);
    return record.status;
  }
}

/// Prepares the composition derivatives of a up to order K.
template <bool z, class S, By by, int K>
int prepare_composition(int n, const double* x, int, double t, double rho, tessarel_blocks& blocks) {
  const Arena::Frame frame(eos::arena);
  const auto temperature = seed<S, by == By::t>(t);
  const auto density = seed<S, by == By::rho>(rho);
  eos::MixtureState<std::remove_const_t<decltype(temperature)>> state;
  eos::prepare(state, n, x, 0, temperature);
  CompositionBlocks<S> c;
  c.order = K;
  for (int k = 0; k < K; ++k) c.arrays[eos::at(k)].resize(families::power_of(n, k + 1));
  eos::CompositionDerivatives<S> d{S(0.0), c.arrays[0].data(), c.arrays[1].data(), c.arrays[2].data()};
  eos::composition_derivatives<K>(state, density, d);
  c.a = d.a;
  blocks.n = n, blocks.by = by, blocks.of_z = z;
  blocks.content = std::move(c);
  if (!state.associates) return 0;
  tessarel_blocks plain;  // for the status of the site iteration
  return prepare_scalar<false, double, By::nothing>(n, x, 0, t, rho, plain);
}

template <class Prepare>
void prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t, const double* rho,
          tessarel_blocks* blocks, int32_t* status, Prepare prepare) noexcept {
  int result = 1;
  const bool refused = !valid_count(n) || !valid_pure(n, ipure) || boundary::any_null({x, t, rho, blocks});
  if (!run(refused, [&] { result = prepare(*n, x, *ipure, *t, *rho, *blocks); }) && blocks != nullptr) blocks->n = 0;
  if (status != nullptr) *status = result;
}

/// Derivative of order (kt, kr) by t and rho of an assembled number; NaN when the record does not carry it.
template <class N>
double coefficient(const N& value, By by, int kt, int kr) {
  if constexpr (std::is_same_v<N, double>) {
    return kt == 0 && kr == 0 ? value : not_a_number;
  } else if constexpr (N::variables == 2) {
    return kt + kr <= N::order ? numerics::derivative(value, kt, kr) : not_a_number;
  } else {
    if ((by == By::t && kr > 0) || (by == By::rho && kt > 0) || kt + kr > N::order) return not_a_number;
    return numerics::derivative(value, kt + kr);
  }
}

bool suited(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks, bool of_z) {
  return valid_count(n) && !boundary::any_null({x, rho, blocks}) && blocks->n == *n && blocks->of_z == of_z;
}

/// A number made from a record.
void base(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks, bool of_z, int kt,
          int kr, double* out) noexcept {
  scalar(!suited(n, x, rho, blocks, of_z), out, [&] {
    return std::visit(
        [&](const auto& b) {
          if constexpr (requires { eos::assemble(b); })
            return coefficient(eos::assemble(b), blocks->by, kt, kr);
          else if constexpr (requires { b.arrays; })
            return of_z ? (kt + kr == 0 ? 1.0 + *rho * coefficient(b.a, blocks->by, 0, 1) : not_a_number)
                        : coefficient(b.a, blocks->by, kt, kr);
          else
            return not_a_number;
        },
        blocks->content);
  });
}

/// An array of composition derivatives of order k made from a record. z_x is rho a_rhox.
void base_array(const int32_t* n, const double* x, const double* rho, const tessarel_blocks* blocks, bool of_z, int kt,
                int order, double* out) noexcept {
  run(!suited(n, x, rho, blocks, of_z) || out == nullptr, [&] {
    std::visit(
        [&](const auto& b) {
          if constexpr (requires { b.arrays; }) {
            using S = typename std::decay_t<decltype(b.arrays[0])>::value_type;
            if (b.order < order || std::isnan(coefficient(S(0.0), blocks->by, kt, of_z ? 1 : 0))) return;
            const auto& array = b.arrays[eos::at(order - 1)];
            for (std::size_t i = 0; i < array.size(); ++i)
              out[i] = coefficient(array[i], blocks->by, kt, of_z ? 1 : 0) * (of_z ? *rho : 1.0);
          }
        },
        blocks->content);
  });
}

constexpr int32_t mixture = 0;

}  // namespace

extern "C" tessarel_blocks* tessarel_blocks_new(void) {
  tessarel_blocks* blocks = nullptr;
  run(false, [&blocks] { blocks = new tessarel_blocks; });
  return blocks;
}
extern "C" void tessarel_blocks_free(tessarel_blocks* blocks) {
  delete blocks;
}

#define PREP(name, ...)                                                                                         \
  extern "C" void tessarel_##name##_prep(const int32_t* n, const double* x, const double* t, const double* rho, \
                                         tessarel_blocks* blocks, int32_t* status) {                            \
    prep(n, x, &mixture, t, rho, blocks, status, __VA_ARGS__);                                                  \
  }
#define PREP_PURE(name, ...)                                                                                       \
  extern "C" void tessarel_##name##_prep(const int32_t* n, const double* x, const int32_t* ipure, const double* t, \
                                         const double* rho, tessarel_blocks* blocks, int32_t* status) {            \
    prep(n, x, ipure, t, rho, blocks, status, __VA_ARGS__);                                                        \
  }
#define BASE(name, call, ...)                                                                  \
  extern "C" void tessarel_##name##_base(const int32_t* n, const double* x, const double* rho, \
                                         const tessarel_blocks* blocks, double* out) {         \
    call(n, x, rho, blocks, __VA_ARGS__, out);                                                 \
  }

PREP(calc_a, prepare_scalar<false, double, By::nothing>)
PREP(calc_da_dt, prepare_scalar<false, T1, By::t>)
PREP(calc_d2a_dt2, prepare_scalar<false, T2, By::t>)
PREP(calc_d3a_dt3, prepare_scalar<false, T3, By::t>)
PREP(calc_da_dx, prepare_composition<false, double, By::nothing, 1>)
PREP(calc_d2a_dxdx, prepare_composition<false, double, By::nothing, 2>)
PREP(calc_d3a_dxdxdx, prepare_composition<false, double, By::nothing, 3>)
PREP(calc_d2a_dtdx, prepare_composition<false, T1, By::t, 1>)
BASE(calc_a, base, false, 0, 0)
BASE(calc_da_dt, base, false, 1, 0)
BASE(calc_d2a_dt2, base, false, 2, 0)
BASE(calc_d3a_dt3, base, false, 3, 0)
BASE(calc_da_dx, base_array, false, 0, 1)
BASE(calc_d2a_dxdx, base_array, false, 0, 2)
BASE(calc_d3a_dxdxdx, base_array, false, 0, 3)
BASE(calc_d2a_dtdx, base_array, false, 1, 1)

PREP_PURE(calc_z, prepare_scalar<true, double, By::nothing>)
PREP_PURE(calc_dz_drho, prepare_scalar<true, T1, By::rho>)
PREP_PURE(calc_d2z_drho2, prepare_scalar<true, T2, By::rho>)
PREP_PURE(calc_d3z_drho3, prepare_scalar<true, T3, By::rho>)
PREP(calc_dz_dt, prepare_scalar<true, T1, By::t>)
PREP(calc_d2z_dt2, prepare_scalar<true, T2, By::t>)
PREP(calc_d2z_dtdrho, prepare_scalar<true, Taylor<2, 2>, By::t_rho>)
PREP(calc_dz_dx, prepare_composition<true, T1, By::rho, 1>)
PREP(calc_d2z_dxdx, prepare_composition<true, T1, By::rho, 2>)
BASE(calc_z, base, true, 0, 0)
BASE(calc_dz_drho, base, true, 0, 1)
BASE(calc_d2z_drho2, base, true, 0, 2)
BASE(calc_d3z_drho3, base, true, 0, 3)
BASE(calc_dz_dt, base, true, 1, 0)
BASE(calc_d2z_dt2, base, true, 2, 0)
BASE(calc_d2z_dtdrho, base, true, 1, 1)
BASE(calc_dz_dx, base_array, true, 0, 1)
BASE(calc_d2z_dxdx, base_array, true, 0, 2)
