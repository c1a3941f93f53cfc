// The phase boundary of a session's mixture as the state solvers ask for it.
#pragma once

#include "interface/session.hpp"
#include "solvers/two_phase.hpp"

namespace tessarel::interface {

/// Answers from the session's envelope, which a query traces at need. Texts of its messages live in the object.
class SessionBoundary final : public solvers::Boundary {
 public:
  explicit SessionBoundary(Session& session) : session_(session) {}

  Message saturation(char given, char what, double value, envelope::SaturationPoint& point) override;
  Message dew_t(double p, double& t) override;
  const envelope::Table& table() override;
  [[nodiscard]] const fluid::Limits& limits() const override { return session_.limits; }
  [[nodiscard]] bool traced() const override { return session_.envelope.hasphaseenv; }
  bool trace() override;
  bool above_critical(double t) override;

 private:
  Session& session_;
  FixedText<64> text_;
};

}  // namespace tessarel::interface
