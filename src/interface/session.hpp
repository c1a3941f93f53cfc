// A session: what a host sees as "the selected fluid", with the working storage of its evaluations. The library starts
// with session 0; a host may make more, each with a fluid of its own, and let each of its threads work on another one.
//
// This folder alone knows which session is current on a thread. An entry reads it once and hands on what the routines
// below take as arguments.
#pragma once

#include <cstdint>

#include "eos/fluid.hpp"
#include "fluid/limits.hpp"
#include "fluid/readers.hpp"

namespace tessarel::interface {

struct Session {
  explicit Session(platform::FluidDatabase& database) : sources{database, {}, {}} {}
  /// Same selection, parameters and limits on a workspace of its own.
  Session(const Session& other)
      : names(other.names),
        model(other.model),
        z(other.z),
        limits(other.limits),
        simplified(other.simplified),
        sources(other.sources) {
    work.means = other.work.means;
    work.reserve(model);
  }
  Session& operator=(const Session&) = delete;

  /// Names as the host gave them; with the number of components the key of the re-selection test.
  fluid::PerComponent<fluid::Name> names{};
  eos::Model model;
  fluid::Vector z{};  ///< overall mole fractions
  fluid::Limits limits;
  bool simplified = false;  ///< once set it stays for the session
  eos::Workspace work;
  fluid::Sources sources;

  [[nodiscard]] bool selected() const noexcept { return model.parameters.n > 0; }
  [[nodiscard]] int n() const noexcept { return model.parameters.n; }
  [[nodiscard]] eos::Eos eos() noexcept { return {model, work, simplified}; }
  [[nodiscard]] eos::Fluid fluid() noexcept { return {eos(), n(), z.data(), limits}; }
  /// To be called after a parameter has changed.
  void update() {
    model.update();
    work.reserve(model);
  }
};

/// Selects a fluid or mixture in a session; messages and effects as tessarel_setfluid.
Message select(Session& session, const std::int32_t* nf, fluid::NameList names, const double* z);

/// The session that is current on the calling thread.
Session& current_session() noexcept;

}  // namespace tessarel::interface
