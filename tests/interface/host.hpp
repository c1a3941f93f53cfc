// The library as a host sees it: calls through the C interface only.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "interface/session.hpp"
#include "tessarel/tessarel.h"

namespace host {

/// The session behind the calls.
inline tessarel::interface::Session& session() {
  return tessarel::interface::current_session();
}
inline tessarel::fluid::Parameters& parameters() {
  return session().model.parameters;
}

inline std::string text(const char* field, std::size_t size) {
  return std::string(tessarel::trimmed({field, size}));
}

/// Selects and returns the message. `width` is the length of a name field.
inline std::string select(const std::vector<std::string>& names, const std::vector<double>& z, std::size_t width = 32) {
  std::string fields;
  for (std::string name : names) {
    name.resize(width, ' ');
    fields += name;
  }
  const auto nf = static_cast<std::int32_t>(names.size());
  std::array<char, 300> err{};
  tessarel_setfluid(&nf, fields.data(), z.data(), err.data(), width, err.size());
  return text(err.data(), err.size());
}

/// One property call: fields in the order of the arguments, as the caller hands them in and gets them back.
struct Call {
  double t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 0;
  double cv = 0, dpdt = 0, dpdv = 0, d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0;
  std::array<double, 20> x{}, y{}, lnphi{};
  std::string err;

  /// The call as it is, with the place of the volume and of the message given.
  void raw(const char* spec, std::size_t size, std::int32_t order, double* volume, char* field, std::size_t width) {
    tessarel_tmdprop(spec, &order, &t, &p, volume, &u, &h, &s, &q, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv,
                     &dcvdt, x.data(), y.data(), lnphi.data(), field, size, width);
  }
  Call& run(std::string_view spec, std::int32_t order = 0) {
    std::array<char, 200> field{};
    raw(spec.data(), spec.size(), order, &v, field.data(), field.size());
    err = text(field.data(), field.size());
    return *this;
  }
};

/// The value that a letter of an input pair names.
inline double Call::*field_named(char letter) {
  constexpr std::string_view letters = "TPvuhs";
  constexpr double Call::*fields[] = {&Call::t, &Call::p, &Call::v, &Call::u, &Call::h, &Call::s, &Call::q};
  return fields[std::min(letters.find(letter), letters.size())];
}

/// A state from two molar SI values.
inline Call at_tp(std::string_view spec, double t, double p, std::int32_t order = 0) {
  Call call;
  call.t = t;
  call.p = p;
  return call.run(spec, order);
}
inline Call at_tv(double t, double v, std::int32_t order = 0) {
  Call call;
  call.t = t;
  call.v = v;
  return call.run("Tv Vph", order);
}

/// Molar mass of the selected fluid [kg/mol].
inline double molar_mass(const std::vector<double>& z) {
  double mass = 0;
  tessarel_fluidinfo(z.data(), &mass, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  return mass;
}

/// The results of a call as the molar SI values of a next one.
inline Call to_inputs(const Call& result, double mass) {
  Call inputs;
  inputs.t = result.t + 273.15;
  inputs.p = result.p * 1e5;
  inputs.v = result.v * mass;
  inputs.u = result.u * mass * 1000;
  inputs.h = result.h * mass * 1000;
  inputs.s = result.s * mass * 1000;
  inputs.q = result.q;
  inputs.x = result.x;
  inputs.y = result.y;
  return inputs;
}

/// Fluids and mixtures of the tests, with one liquid-like and one vapour-like state [K, Pa].
struct Case {
  const char* title;
  std::vector<std::string> names;
  std::vector<double> z;
  double t_liquid, p_liquid, t_vapour, p_vapour;
};

inline const std::vector<Case>& cases() {
  static const std::vector<Case> list = {
      {"propane", {"propane"}, {1}, 250, 50e5, 330, 5e5},
      {"n-hexane", {"n-hexane"}, {1}, 300, 20e5, 420, 3e5},
      {"toluene", {"toluene"}, {1}, 350, 300e5, 500, 8e5},
      {"natural gas", {"methane", "ethane", "propane", "n-butane"}, {0.4, 0.3, 0.2, 0.1}, 200, 100e5, 350, 20e5},
      {"water", {"water"}, {1}, 320, 50e5, 450, 2e5},
      {"carbon dioxide", {"carbon dioxide"}, {1}, 250, 60e5, 330, 20e5},
      {"polar and associating", {"methanol", "acetone", "water"}, {0.3, 0.3, 0.4}, 310, 10e5, 430, 2e5},
      {"water and alcohols",
       {"water", "methanol", "ethanol", "1-propanol", "1-butanol"},
       {0.2, 0.2, 0.2, 0.2, 0.2},
       310,
       10e5,
       430,
       2e5},
      {"solvents", {"n-hexane", "benzene", "cyclohexane"}, {0.5, 0.3, 0.2}, 300, 10e5, 450, 2e5},
  };
  return list;
}

/// Runs `check(spec, state, fluid, molar mass)` on both states of every fluid.
template <class Check>
void at_states(std::int32_t order, Check&& check) {
  for (const Case& fluid : cases())
    for (const char* spec : {"TP Lph", "TP Vph"}) {
      SCOPED_TRACE(std::string(fluid.title) + " " + spec);
      ASSERT_EQ(select(fluid.names, fluid.z), "No errors");
      const Call state = spec[3] == 'L' ? at_tp(spec, fluid.t_liquid, fluid.p_liquid, order)
                                        : at_tp(spec, fluid.t_vapour, fluid.p_vapour, order);
      ASSERT_EQ(state.err, "No errors");
      check(spec, state, fluid, molar_mass(fluid.z));
    }
}

/// The names that a header declares.
inline std::set<std::string> declared_names(const std::string& header) {
  std::ifstream file(PROJECT_DIR "/include/tessarel/" + header);
  std::string source(std::istreambuf_iterator<char>(file), {});
  source = std::regex_replace(source, std::regex(R"(/\*([^*]|\*+[^*/])*\*+/)"), "");
  std::set<std::string> names;
  const std::regex declaration(R"(\b(tessarel_\w+)\s*\()");
  for (std::sregex_iterator it(source.begin(), source.end(), declaration), end; it != end; ++it) names.insert((*it)[1]);
  return names;
}

}  // namespace host
