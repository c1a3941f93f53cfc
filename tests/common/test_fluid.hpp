// A fluid of a test: a fresh session with a selection of shipped fluids, or with reference fluids read from their
// files.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "fluid/combining_rules.hpp"
#include "interface/session.hpp"

namespace tessarel::testing {

using Values = std::vector<double>;

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::stringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// The cells of a reference table, without its heads.
inline std::vector<std::vector<std::string>> read_reference(const std::string& name) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream file(std::string(TEST_DATA_DIR) + "/reference/" + name);
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) rows.push_back(split(line, ','));
  return rows;
}

/// `name:x|name:x`
struct Mixture {
  std::vector<std::string> names;
  Values x;

  explicit Mixture(const std::string& text) {
    for (const std::string& part : split(text, '|')) {
      const auto colon = part.find(':');
      names.push_back(part.substr(0, colon));
      x.push_back(colon == std::string::npos ? 1.0 : std::strtod(part.c_str() + colon + 1, nullptr));
    }
  }
};

/// Interaction parameters `i;j:entry|...` in place of all others.
inline void set_kij(interface::Session& session, const std::string& kij) {
  fluid::Parameters& p = session.model.parameters;
  p.k_ij = {};
  for (const std::string& entry : split(kij, '|')) {
    int i = 0, j = 0;
    double value = 0;
    EXPECT_EQ(std::sscanf(entry.c_str(), "%d;%d:%lf", &i, &j, &value), 3);
    const auto a = static_cast<std::size_t>(i - 1), b = static_cast<std::size_t>(j - 1);
    p.k_ij[a][b] = p.k_ij[b][a] = value;
  }
}

/// Selects reference fluids in a session; `kij` is `i;j:entry|...`.
inline void select_reference(interface::Session& session, const Mixture& mixture, const std::string& kij = "",
                             bool simplified = false) {
  fluid::Parameters& p = session.model.parameters;
  p.n = static_cast<int>(mixture.names.size());
  session.simplified = simplified;
  for (std::size_t i = 0; i < mixture.names.size(); ++i) {
    const std::string path = std::string(TEST_DATA_DIR) + "/reference/fluids/" + mixture.names[i] + ".saf";
    EXPECT_EQ(fluid::readfluidsfile(path, static_cast<int>(i), p, session.sources.text), no_errors) << path;
    session.z[i] = mixture.x[i];
  }
  set_kij(session, kij);
  fluid::setassocpar(p);
  fluid::set_polar_flags(p);
  session.update();
}

/// The session that the exported entries work on, and its parameters.
inline interface::Session& current() {
  return interface::current_session();
}
inline const fluid::Parameters& parameters() {
  return current().model.parameters;
}

struct TestFluid {
  static platform::FluidDatabase& database() {
    static platform::FluidDatabase shared;
    return shared;
  }

  /// Shipped fluids; the message of the selection is kept.
  TestFluid(const std::vector<std::string>& names, const Values& x) {
    std::string fields;
    for (std::string name : names) {
      name.resize(32, ' ');
      fields += name;
    }
    const auto count = static_cast<std::int32_t>(names.size());
    message = interface::select(session, &count, {fields.data(), 32}, x.data());
    EXPECT_EQ(message, no_errors) << names.front();
    n = session.n();
  }
  /// Reference fluids.
  TestFluid(const Mixture& mixture, const std::string& kij, bool simplified) {
    select_reference(session, mixture, kij, simplified);
    eos.simplified = simplified;
    n = session.n();
  }

  interface::Session session {
    database()
  };
  Message message;
  eos::Eos eos = session.eos();
  int n = 0;
  const double* z = session.z.data();
  const fluid::Limits& limits = session.limits;
  const fluid::Parameters& parameters = session.model.parameters;
  [[nodiscard]] eos::Fluid fluid() const { return {eos, n, z, limits}; }
};

}  // namespace tessarel::testing

namespace tessarel {
inline void PrintTo(Message message, std::ostream* out) {
  *out << message.text();
}
}  // namespace tessarel
