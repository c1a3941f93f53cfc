// A session: what a host sees as "the selected fluid", with the working storage of its evaluations. The library starts
// with session 0; a host may make more, each with a fluid of its own, and let each of its threads work on another one.
//
// This folder alone knows which session is current on a thread. An entry reads it once and hands on what the routines
// below take as arguments.
#pragma once

#include <cmath>
#include <cstdint>
#include <memory>

#include "envelope/critical_point.hpp"
#include "envelope/table.hpp"
#include "eos/fluid.hpp"
#include "fluid/limits.hpp"
#include "fluid/readers.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::interface {

struct Session {
  explicit Session(platform::FluidDatabase& database) : sources{database, {}, {}} {}
  /// Same selection, parameters and limits on a workspace of its own.
  Session(const Session& other)
      : names(other.names),
        model(other.model),
        failed(other.failed),
        z(other.z),
        limits(other.limits),
        simplified(other.simplified),
        moment(other.moment),
        sources(other.sources),
        components(other.components),
        critical_points(other.critical_points) {
    if (other.envelope.table)
      envelope = Envelope{std::make_unique<envelope::Table>(*other.envelope.table), other.envelope};
    work.means = other.work.means;
    work.reserve(model);
  }
  Session& operator=(const Session&) = delete;

  /// Names as the host gave them; with the number of components the key of the re-selection test.
  fluid::PerComponent<fluid::Name> names{};
  eos::Model model;
  bool failed = false;  ///< the last selection has ended in the data readers, and what they left is no fluid
  fluid::Vector z{};    ///< overall mole fractions
  fluid::Limits limits;
  bool simplified = false;                     ///< once set it stays for the session
  fluid::Moment moment = fluid::Moment::none;  ///< of the records selected, which a fit varies
  eos::Workspace work;
  solvers::PhaseValues phases{};  ///< of the last two phases that tessarel_tmdpropsat has reported
  fluid::Sources sources;

  /// Critical points of the components of a mixture, which need no second search for another composition.
  struct ComponentCriticalPoints {
    bool valid = false;
    bool simplified = false;
    fluid::Vector tci{}, pci{};
  };
  ComponentCriticalPoints components;
  envelope::CriticalMemory critical_points{};  ///< also of components selected earlier

  /// The traced phase envelope of a mixture, and what it belongs to.
  struct Envelope {
    std::unique_ptr<envelope::Table> table{};  ///< obtained at the first selection of a mixture
    bool traced = false;                       ///< the table holds a trace, of:
    fluid::Vector z{};
    bool simplified = false;
    int ierr = 0;                      ///< how it ended
    bool hasphaseenv = false;          ///< the limits are those of the trace
    double above_critical = HUGE_VAL;  ///< a temperature that is known to be above the critical one
    fluid::Limits at_selection{};

    Envelope() = default;
    Envelope(std::unique_ptr<envelope::Table> copy, const Envelope& other)
        : table(std::move(copy)),
          traced(other.traced),
          z(other.z),
          simplified(other.simplified),
          ierr(other.ierr),
          hasphaseenv(other.hasphaseenv),
          above_critical(other.above_critical),
          at_selection(other.at_selection) {}
  };
  Envelope envelope;

  /// Components to calculate with; 0 as long as no selection has succeeded.
  [[nodiscard]] int n() const noexcept { return failed ? 0 : model.parameters.n; }
  [[nodiscard]] bool selected() const noexcept { return n() > 0; }
  [[nodiscard]] eos::Eos eos() noexcept { return {model, work, simplified}; }
  [[nodiscard]] eos::Fluid fluid() noexcept { return {eos(), n(), z.data(), limits}; }
  /// To be called after a parameter has changed.
  void update() {
    model.update();
    work.reserve(model);
    if (envelope.hasphaseenv) limits = envelope.at_selection;
    envelope.traced = envelope.hasphaseenv = false;
    envelope.above_critical = HUGE_VAL;
    components.valid = false;
  }
};

/// Selects a fluid or mixture in a session; messages and effects as tessarel_setfluid.
Message select(Session& session, const std::int32_t* nf, fluid::NameList names, const double* z);

/// After parameters of components or pairs have changed: flags, pair parameters and tables as a record with these
/// values gives them. A traced envelope is dropped.
void derive(Session& session);

/// Critical point and working range of the composition, as a selection sets them; an envelope is owed again.
Message analyse(Session& session);

/// The session that is current on the calling thread.
Session& current_session() noexcept;

}  // namespace tessarel::interface
