// The parameters of one component, taken out of those of a mixture: what a record sets, as a value that can be kept,
// compared and put back into any place.
#pragma once

#include "fluid/parameters.hpp"

namespace tessarel::fluid {

class Component {
 public:
  Component() = default;
  /// Component `i` of `p`, counted from 0.
  Component(const Parameters& p, std::size_t i) noexcept;
  /// Writes what reading the record into place `i` would write; entries of further site types are left alone.
  void put(Parameters& p, std::size_t i) const noexcept;
  friend bool operator==(const Component& a, const Component& b) noexcept;

 private:
  Name name_;
  std::array<double, 17> values_{};
  std::int32_t types_ = 0;
  std::array<std::int32_t, max_sites> sites_{};
  std::array<std::array<double, max_sites>, max_sites> energy_{};
  double volume_ = 0;
};

}  // namespace tessarel::fluid
