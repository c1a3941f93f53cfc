#include "flash/phase_check.hpp"

#include "flash/pt_flash.hpp"

namespace tessarel::flash {

Message check_stable(const eos::Fluid& fluid, double t, double p, double rho) {
  constexpr Message unstable = "TESSAREL error: no stable single phase at this composition, temperature and volume...";
  // In tension a bubble of vapour is always more stable.
  if (!(p > 0)) return unstable;
  const Feed feed = make_feed(fluid, t, p);
  Phase phase = feed.phase;
  eos::calc_lnphi_tprho(fluid.eos, fluid.n, fluid.z, t, p, rho, phase.lnphi.data());
  if (tangent_distance(fluid.n, fluid.z, feed.d.data(), phase) > stability_slack) return unstable;
  if (fluid.pure()) return no_errors;

  const PtResult result = flmain(fluid, t, p, false, nullptr, nullptr);
  if (result.code == 3) return no_errors;
  if (!result.two_phases()) return message_of(fluid.n, result);
  for (const Phase& other : {result.split.liquid, result.split.vapour})
    if (tangent_distance(fluid.n, fluid.z, feed.d.data(), other) < -stability_slack) return unstable;
  return no_errors;
}

}  // namespace tessarel::flash
