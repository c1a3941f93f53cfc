// Sweep of the PT flash over mixtures and random states, each answer judged by a brute-force search that has nothing
// in common with the flash (flash_sweep_judge.hpp; the tangent plane distance is that of Michelsen 1982).
//
//   tessarel_flash_sweep [round-trips | self-check] [--mixture NAME] [--states N] [--seed S] [--threads T] [--effort E]
//
// N is the number of states for each mixture. The table of verdicts goes to the standard output; every wrong or failing
// state is one line on the standard error. `round-trips` judges the general flash; `self-check` needs no flash.
#include "flash_sweep.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "interface/session.hpp"
#include "tessarel/routines.h"

namespace tessarel::sweep {
namespace {

std::mutex output;

/// How often the ways behind the first one were needed, over all threads.
eos::Statistics fallbacks;
struct Count {
  long long eos::Statistics::*member;
  const char* what;
};
constexpr Count counts[] = {
    {&eos::Statistics::substituted_splits, "splits left to the substitutions"},
    {&eos::Statistics::minimisers, "of these to the minimiser"},
    {&eos::Statistics::rescued_splits, "found from a trial phase after that"},
    {&eos::Statistics::wide_splits, "found only by the wider starts"},
    {&eos::Statistics::three_phases, "two phases reported where a third is stable"},
    {&eos::Statistics::state_function_searches, "general flashes left to the search in t and p"},
    {&eos::Statistics::bracketed_searches, "of these to the bracket"},
};

/// The counts of one mixture. `near` holds differences next to a phase boundary, `doubtful` those that are no fault of
/// the flash (Judge::densities_hold).
struct Verdicts {
  long states = 0, one = 0, two = 0, three = 0, missed_split = 0, made_split = 0, near = 0, failures = 0,
       false_splits = 0, bad = 0, judge_missed = 0, doubtful = 0;
  double fugacity = 0, balance = 0;
};

constexpr double unstable = 1e-6, boundary_beta = 1e-4, noise = 1e-10;

bool near_boundary(double beta) {
  return std::min(beta, 1 - beta) < boundary_beta;
}

/// Two phases of the flash as the judge sees them.
struct Checked {
  Split split;
  double fugacity = 0, balance = 0;
  std::string fault;  ///< empty: what the flash says holds
};

Checked check(const Judge& judge, const State& state, const Flash& answer) {
  Checked out;
  const Vec &z = *state.z, x = judge.compress(answer.x.data()), y = judge.compress(answer.y.data());
  const auto positive = [](double e) { return e > 0 && e <= 1 + 1e-12; };
  double sum_x = 0, sum_y = 0;
  for (std::size_t i = 0; i < z.size(); ++i) {
    sum_x += answer.x[i], sum_y += answer.y[i];
    const double off = std::abs((1 - answer.beta) * answer.x[i] + answer.beta * answer.y[i] - z[i]);
    out.balance = std::max(out.balance, off);
  }
  out.balance = std::max({out.balance, std::abs(sum_x - 1), std::abs(sum_y - 1)});
  if (!std::all_of(x.begin(), x.end(), positive) || !std::all_of(y.begin(), y.end(), positive) ||
      !(answer.beta >= 0 && answer.beta <= 1) || !(out.balance < 1e-2)) {
    out.fault = "fractions without meaning";
    return out;
  }
  out.split = {answer.beta, judge.lower(x), judge.lower(y), 0};
  out.split.gain = judge.gain(answer.beta, out.split.x, out.split.y);
  const Vec ln_fx = judge.plane(out.split.x), ln_fy = judge.plane(out.split.y);
  for (std::size_t i = 0; i < x.size(); ++i)
    if (x[i] > 1e-250 && y[i] > 1e-250) out.fugacity = std::max(out.fugacity, std::abs(ln_fx[i] - ln_fy[i]));
  if (out.balance > 1e-9) out.fault = "mole balance";
  if (!(out.fugacity < 1e-6)) out.fault = "fugacities differ";
  if (out.split.y.rho > out.split.x.rho * (1 + 1e-9)) out.fault = "y is the denser phase";
  if (!(out.split.gain < noise)) out.fault = "Gibbs energy above that of the feed";
  return out;
}

/// Counts and reports a fault, unless the densities of a phase that it rests on are in doubt.
void fault(const Judge& judge, const State& state, Verdicts& v, long Verdicts::*count, const std::string& what,
           double number, const Vec& w, const std::vector<const Phase*>& phases) {
  const bool hold =
      std::all_of(phases.begin(), phases.end(), [&](const Phase* phase) { return judge.densities_hold(*phase); });
  ++(v.*(hold ? count : &Verdicts::doubtful));
  report(state, (hold ? "" : "densities in doubt: ") + what, number, w);
}

void judge_one_phase(const Judge& judge, const State& state, Verdicts& v) {
  const auto least = judge.search_feed().front();
  if (least.tpd > -noise) return;
  if (least.tpd > -unstable) {
    ++v.near;
    return;
  }
  const Answer right = judge.solve();
  if (right.split && near_boundary(right.split->beta)) {
    ++v.near;
    return;
  }
  fault(judge, state, v, &Verdicts::missed_split, "one phase, but the feed is unstable", least.tpd, least.w.x,
        {&judge.feed(), &least.w});
}

void judge_two_phases(const Judge& judge, const State& state, const Flash& answer, Verdicts& v) {
  const Checked checked = check(judge, state, answer);
  v.balance = std::max(v.balance, checked.balance);
  v.fugacity = std::max(v.fugacity, checked.fugacity);
  const Split& split = checked.split;
  std::vector<const Phase*> present = {&judge.feed()};
  if (!split.x.x.empty()) present.insert(present.end(), {&split.x, &split.y});
  // A split below the feed proves by itself that the feed is unstable. The search must find that too.
  const auto least = judge.search_feed(-unstable).front();
  if (checked.fault.empty() && split.gain < -noise) {
    if (least.tpd > -noise)
      fault(judge, state, v, &Verdicts::judge_missed, "the judge finds no trial phase for a real split", least.tpd,
            least.w.x, {&judge.feed(), &split.x, &split.y});
  } else if (least.tpd > -noise) {
    if (near_boundary(answer.beta))
      ++v.near;
    else
      fault(judge, state, v, &Verdicts::made_split, "two phases, but the feed is stable " + checked.fault, least.tpd,
            least.w.x, present);
    return;
  }
  if (!checked.fault.empty()) {
    fault(judge, state, v, &Verdicts::bad, checked.fault, checked.fugacity, split.x.x, present);
    return;
  }
  auto below = judge.search(judge.plane(split.beta > 0.5 ? split.y : split.x), {split.x, split.y}, -1e300);
  below.erase(std::remove_if(below.begin(), below.end(), [](const Trial& w) { return w.tpd > -1e-7; }), below.end());
  if (below.empty()) return;
  // A third phase lowers the Gibbs energy. Another pair of phases may do so, too, and be stable: then that is the
  // answer. The judge also starts from the feed, in case the flash's split leads astray.
  Answer other = judge.settle(judge.splits_from(below, &split));
  if (!other.split || other.three) other = judge.solve();
  if (other.split && !other.three && other.split->gain < split.gain - noise) {
    const bool near = near_boundary(answer.beta) || near_boundary(other.split->beta) || below.front().tpd > -unstable;
    if (near)
      ++v.near;
    else
      fault(judge, state, v, &Verdicts::false_splits, "false split, another one is stable", below.front().tpd,
            below.front().w.x, {&split.x, &split.y, &below.front().w, &other.split->x, &other.split->y});
  } else {
    ++v.three;
  }
}

void print_fallbacks() {
  for (const Count& count : counts) std::printf("%lld %s\n", fallbacks.*count.member, count.what);
}

/// Returns the number of wrong answers and failures.
long sweep(const Options& options) {
  std::vector<Verdicts> all(mixtures.size());
  const auto start = std::chrono::steady_clock::now();
  for_each_state(options, [&](const State& state) {
    Verdicts v;
    const Flash answer = flash(state);
    if (answer.kind == Flash::Kind::failure) {
      ++v.failures;
      report(state, "failure: " + answer.text);
    } else {
      const Judge judge(*state.z, state.t, state.p, options.effort);
      if (answer.kind == Flash::Kind::one_phase)
        ++v.one, judge_one_phase(judge, state, v);
      else
        ++v.two, judge_two_phases(judge, state, answer, v);
    }
    const std::lock_guard lock(output);
    Verdicts& sum = all[state.mixture];
    ++sum.states;
    for (const auto count : {&Verdicts::one, &Verdicts::two, &Verdicts::three, &Verdicts::missed_split,
                             &Verdicts::made_split, &Verdicts::near, &Verdicts::failures, &Verdicts::false_splits,
                             &Verdicts::bad, &Verdicts::judge_missed, &Verdicts::doubtful})
      sum.*count += v.*count;
    if (v.doubtful > 0) return;
    sum.fugacity = std::max(sum.fugacity, v.fugacity);
    sum.balance = std::max(sum.balance, v.balance);
  });
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf(
      "| mixture | states | one phase | two phases | three-phase points | wrong: one phase | wrong: two phases "
      "| false splits | wrong values | near a boundary | failures | missed by the judge | densities in doubt "
      "| worst ln f | worst balance |\n|---|");
  for (int i = 0; i < 14; ++i) std::printf("---:|");
  std::printf("\n");
  long states = 0, wrong = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Verdicts& v = all[i];
    states += v.states;
    wrong += v.missed_split + v.made_split + v.false_splits + v.bad + v.failures;
    if (v.states > 0)
      std::printf("| %s | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %ld | %.1e | %.1e |\n",
                  mixtures[i].name.c_str(), v.states, v.one, v.two, v.three, v.missed_split, v.made_split,
                  v.false_splits, v.bad, v.near, v.failures, v.judge_missed, v.doubtful, v.fugacity, v.balance);
  }
  std::printf("\n%ld states in %.1f s on %d threads.\n", states, seconds, options.threads);
  print_fallbacks();
  return wrong;
}

/// Splits that the judge must find by itself, before it judges anything.
int self_check() {
  struct Known {
    Mixture mixture;
    double t, p;
    bool stable;
  };
  const std::vector<Known> known = {
      {{"", {"water", "n-hexane"}, {0.5, 0.5}}, 300, 1e5, false},
      {{"", {"methane", "n-butane"}, {0.5, 0.5}}, 300, 4e6, false},
      {{"", {"water", "1-butanol"}, {0.7, 0.3}}, 320, 1e5, false},
      {{"", {"water", "1-butanol"}, {0.97, 0.03}}, 320, 1e5, false},
      {{"", {"carbon dioxide", "water"}, {0.5, 0.5}}, 300, 5e6, false},
      {mixtures[1], 280, 3e6, true},
  };
  int wrong = 0;
  for (const auto& k : known) {
    const Vec z = select(k.mixture, k.mixture.amounts);
    const Answer answer = Judge(z, k.t, k.p).solve();
    const bool right = answer.stable == k.stable && (k.stable || (answer.split && !answer.three));
    std::printf("%-5s %s/%s %.2f at %g K, %g Pa: least tpd %.3e, beta %.6f\n", right ? "ok" : "WRONG",
                k.mixture.fluids[0].c_str(), k.mixture.fluids[1].c_str(), z[0], k.t, k.p, answer.least,
                answer.split ? answer.split->beta : NAN);
    wrong += right ? 0 : 1;
  }
  return wrong;
}

}  // namespace

std::string trimmed(const char* text, std::size_t size) {
  std::string out(text, size);
  out.erase(out.find_last_not_of(' ') + 1);
  return out;
}

Flash flash(const State& state) {
  Flash out;
  out.x.resize(state.z->size()), out.y.resize(state.z->size());
  char err[300];
  tessarel_calc_pt_flash(&state.t, &state.p, out.x.data(), out.y.data(), &out.beta, err, sizeof err);
  out.text = trimmed(err, sizeof err);
  if (out.text == "No errors") out.kind = Flash::Kind::two_phases;
  if (out.text.rfind("Michelsen's Flash calculation: no phase split", 0) == 0) out.kind = Flash::Kind::one_phase;
  return out;
}

void report(const State& state, const std::string& what, double tpd, const Vec& w) {
  const std::lock_guard lock(output);
  std::fprintf(stderr, "%s | T = %.17g P = %.17g | %s", mixtures[state.mixture].name.c_str(), state.t, state.p,
               what.c_str());
  if (!w.empty()) {
    std::fprintf(stderr, " | %.3e at", tpd);
    for (const double e : w) std::fprintf(stderr, " %.6g", e);
  }
  std::fprintf(stderr, "\n");
}

void for_each_state(const Options& options, const std::function<void(const State&)>& judge) {
  constexpr int block = 50;
  std::vector<std::pair<std::size_t, int>> blocks;
  for (std::size_t m = 0; m < mixtures.size(); ++m)
    if (options.mixture.empty() || options.mixture == mixtures[m].name)
      for (int first = 0; first < options.states; first += block) blocks.emplace_back(m, first);
  if (blocks.empty()) throw std::runtime_error("no such mixture: " + options.mixture);
  std::atomic<std::size_t> next{0};
  const auto work = [&] {
    std::int64_t session = 0;
    char err[300];
    tessarel_session_new(&session, err, sizeof err);
    tessarel_session_use(&session, err, sizeof err);
    for (std::size_t b; (b = next++) < blocks.size();) {
      const auto [m, first] = blocks[b];
      const Vec z = select(mixtures[m], mixtures[m].amounts);
      double tc = 0;
      tessarel_fluidinfo(z.data(), nullptr, &tc, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr);
      for (int i = first; i < std::min(first + block, options.states); ++i) {
        Random random{options.seed, m, static_cast<std::uint64_t>(i)};
        const double t = tc * (0.4 + 0.9 * random.uniform());
        judge({m, &z, t, 1e3 * std::pow(3e4, random.uniform())});
      }
    }
    const eos::Statistics& own = interface::current_session().work.statistics;
    const std::lock_guard lock(output);
    for (const Count& count : counts) fallbacks.*count.member += own.*count.member;
  };
  std::vector<std::thread> threads;
  for (int i = 1; i < options.threads; ++i) threads.emplace_back(work);
  work();
  for (auto& thread : threads) thread.join();
}

}  // namespace tessarel::sweep

int main(int argc, char** argv) {
  using namespace tessarel::sweep;
  Options options;
  options.states = 0;
  std::string mode;
  for (int i = 1; i < argc; ++i) {
    const std::string name = argv[i];
    if (name.rfind("--", 0) != 0) {
      mode = name;
      continue;
    }
    const char* value = i + 1 < argc ? argv[++i] : "";
    if (name == "--mixture")
      options.mixture = value;
    else if (name == "--states")
      options.states = std::atoi(value);
    else if (name == "--seed")
      options.seed = std::strtoull(value, nullptr, 10);
    else if (name == "--threads")
      options.threads = std::max(1, std::atoi(value));
    else if (name == "--effort")
      options.effort = std::max(1, std::atoi(value));
    else
      mode = "unknown option";
  }
  // 5,000 round trips over all mixtures.
  if (options.states <= 0) options.states = mode == "round-trips" ? 1 + 5000 / static_cast<int>(mixtures.size()) : 2000;
  try {
    if (mode == "self-check") return self_check();
    if (mode == "round-trips") {
      const long failed = round_trips(options);
      print_fallbacks();
      return failed > 0 ? 1 : 0;
    }
    if (mode.empty()) return sweep(options) > 0 ? 1 : 0;
    std::fprintf(stderr, "%s: modes are round-trips and self-check, options those at the top of the source\n",
                 mode.c_str());
    return 2;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 2;
  }
}
