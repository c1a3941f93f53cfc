// Many states of the selected fluid in one call, each solved as if it were alone.
#include <algorithm>
#include <array>
#include <cmath>

#include "eos/derived.hpp"
#include "interface/boundary.hpp"
#include "interface/dispatch.hpp"
#include "interface/sectmdprop.hpp"
#include "interface/state_dispatch.hpp"
#include "solvers/phase_mix.hpp"
#include "tessarel/tessarel.h"

namespace tessarel::interface {
namespace {

using solvers::State;

constexpr std::size_t state_columns = 7, phase_columns = 4, derived_columns = 7;

/// An output by columns of `count` entries; null where the caller does not want it.
struct Columns {
  double* data;
  std::size_t count, width;

  void fill(std::size_t row, double value) const {
    for (std::size_t j = 0; data != nullptr && j < width; ++j) data[j * count + row] = value;
  }
  template <std::size_t N>
  void store(std::size_t row, const std::array<double, N>& values, std::size_t first = 0) const {
    for (std::size_t j = 0; data != nullptr && j < N; ++j) data[(first + j) * count + row] = values[j];
  }
};

/// The distinct messages of a call, in the order in which they came up.
class Texts {
 public:
  Texts(char* data, std::size_t length, std::int32_t capacity)
      : data_(data), length_(length), capacity_(usable_field(data, length) ? capacity : 0) {}

  /// The place of a message, from 1; -1 if there is no place left.
  std::int32_t place_of(TextField message) {
    const std::string_view text = trimmed(input_text(message.data, message.size));
    for (std::int32_t k = 0; k < used_; ++k)
      if (trimmed({field(k).data, length_}) == trimmed(text.substr(0, length_))) return k + 1;
    if (used_ == capacity_) return -1;
    field(used_).assign(text);
    return ++used_;
  }
  [[nodiscard]] std::int32_t used() const { return used_; }

 private:
  [[nodiscard]] TextField field(std::int32_t k) const {
    return {data_ + static_cast<std::size_t>(k) * length_, length_};
  }
  char* data_;
  std::size_t length_;
  std::int32_t capacity_, used_ = 0;
};

/// v, u, h, s of a phase of two, which lies on its root of lower Gibbs energy; of a pure fluid both are equal.
std::array<double, phase_columns> values_of_phase(const eos::Fluid& fluid, const State& s, const double* x,
                                                  bool liquid) {
  const eos::Root root = !fluid.pure() ? eos::Root::lower_gibbs : liquid ? eos::Root::liquid : eos::Root::vapour;
  const double v = solvers::root_volume(fluid.eos, fluid.n, x, s.t, s.p, root);
  const solvers::Values values = solvers::values_at(fluid.eos, fluid.n, x, s.t, s.p, v);
  return {values.v, values.u, values.h, values.s};
}

std::array<double, derived_columns> derived_of(const eos::Fluid& fluid, const State& s) {
  const SecondOrder second = calc_sectmdprop(fluid.eos, fluid.n, fluid.z, s.t, fluid::avogadro_factor / s.v);
  const eos::Derived d = eos::calc_derived(fluid.eos, fluid.n, fluid.z, s.t, s.v);
  return {second.cv, d.cp, d.w, d.jt, d.kappa, d.alpha, d.g};
}

struct Outputs {
  Columns state, liquid, vapour, derived;
  double *x, *y;
  std::int32_t* code;
};

/// Solves state number `row` and stores it.
void solve_row(Session& session, const InputSpec& input, std::size_t row, double a, double b, const Outputs& out,
               Texts& texts) {
  const auto n = static_cast<std::size_t>(session.n());
  const eos::Fluid fluid = session.fluid();
  fluid::Vector x = session.z, y = session.z;
  constexpr double none = fluid::not_computed;  // "Tm" of a liquid in tension writes no energies
  Solution solution{
      {none, none, none, none, none, none, input.single_phase && input.liquid ? 0.0 : 1.0}, {}, x.data(), y.data()};
  State& state = solution.state;
  value_named(input.first, state) = a;
  value_named(input.second, state) = b;
  for (const Columns& columns : {out.state, out.liquid, out.vapour, out.derived})
    columns.fill(row, fluid::not_computed);
  std::array<char, 300> message{};
  const TextField err{message.data(), message.size()};
  const bool solved = dispatch(session, of_tmdprop, input, solution, err);
  out.code[row] = solved ? 0 : texts.place_of(err);
  if (solved) {
    const bool two_phases = state.q > 0 && state.q < 1;
    if (n > 1) {
      normalise(session.n(), x.data());
      normalise(session.n(), y.data());
    }
    out.state.store<state_columns>(row, {state.t, state.p, state.v, state.u, state.h, state.s, state.q});
    if (two_phases && out.liquid.data != nullptr) out.liquid.store(row, values_of_phase(fluid, state, x.data(), true));
    if (two_phases && out.vapour.data != nullptr) out.vapour.store(row, values_of_phase(fluid, state, y.data(), false));
    // At the limit of the metastable states derived properties diverge.
    if (!two_phases && input.second != 'm' && out.derived.data != nullptr) {
      const auto values = derived_of(fluid, state);
      if (std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); }))
        out.derived.store(row, values);
    }
  }
  const double* z = session.z.data();
  if (out.x != nullptr)
    std::copy_n(composition_of(liquid_phase, session.n(), z, x.data(), y.data()), n, out.x + row * n);
  if (out.y != nullptr)
    std::copy_n(composition_of(vapour_phase, session.n(), z, x.data(), y.data()), n, out.y + row * n);
}

}  // namespace
}  // namespace tessarel::interface

extern "C" void tessarel_states(const char* pair, const int64_t* count, const double* a, const double* b,
                                double* states, double* liquids, double* vapours, double* derived, double* x, double* y,
                                int32_t* codes, int32_t* text_count, char* texts, char* err, size_t pair_len,
                                size_t texts_len, size_t err_len) {
  using namespace tessarel;
  using namespace tessarel::interface;
  const TextField errors{err, err_len};
  errors.assign(no_errors);
  Session* const selected = session_of_call({count, a, b, states, codes, text_count}, errors);
  if (selected == nullptr) return;
  constexpr std::int64_t most_states = std::int64_t{1} << 40;
  if (*count < 0 || *count > most_states || *text_count < 0) {
    errors.assign("TESSAREL error: the number of states or of texts is negative or too large...");
    return;
  }
  Session& session = *selected;
  const InputSpec input = read_input_spec(input_text(pair, pair_len));
  const auto rows = static_cast<std::size_t>(*count);
  const Outputs out{{states, rows, state_columns},
                    {liquids, rows, phase_columns},
                    {vapours, rows, phase_columns},
                    {derived, rows, derived_columns},
                    x,
                    y,
                    codes};
  Texts messages(texts, texts_len, *text_count);
  *text_count = 0;
  guarded(errors, [&] {
    for (std::size_t row = 0; row < rows; ++row) solve_row(session, input, row, a[row], b[row], out, messages);
  });
  *text_count = messages.used();
}
TESSAREL_FORTRAN_TWIN(tessarel_states);
