// A hostile host: calls every entry of the interface, and some building blocks, with random arguments: null pointers,
// numbers that are none or extreme, wrong counts and lengths, selections that fail, several sessions in turn.
//
//   hostile_host [--calls N | --seconds N] [--seed S] [--trace]
//
// It fails when a call writes outside its arrays, reports success beside numbers that are not finite, works on without
// a selection, or when a state at the end differs in a bit from the same state at the beginning. It prints the slowest
// calls. The calls follow from the seed; with --trace each is printed before it is made.
#include "hostile_host.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <tuple>
#include <type_traits>

#include "tessarel/blocks.h"

namespace tessarel::hostile {
namespace {

using Clock = std::chrono::steady_clock;

/// Processor time of the thread [s], which another load on the machine does not lengthen.
double spent_time() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

void hostile_forward(double* t, double* p, double* v, double* u, double* h, double* s, double* q, double*, double*,
                     char* err, std::size_t err_len) {
  for (double* value : {t, p, v, u, h, s, q}) *value = std::numeric_limits<double>::quiet_NaN();
  std::fill_n(err, err_len, '\x01');
}
void hostile_forward_1ph(double* t, double* p, double* v, double* u, double* h, double* s, char* err,
                         std::size_t err_len) {
  double q = 0;
  hostile_forward(t, p, v, u, h, s, &q, nullptr, nullptr, err, err_len);
}

/// Arguments are made in the order of the signature.
template <class T>
T argument(Arguments& a, Random& random) {
  if constexpr (std::is_same_v<T, std::size_t>) {
    return a.length();
  } else if constexpr (std::is_same_v<T, tessarel_forward> || std::is_same_v<T, tessarel_forward_1ph>) {
    a.take();
    if (a.null_chance()) return nullptr;
    if constexpr (std::is_same_v<T, tessarel_forward>)
      return random.of<T>({tessarel_tp, tessarel_tv_1, hostile_forward});
    else
      return random.of<T>({tessarel_tp_vph, tessarel_tv_1ph, hostile_forward_1ph});
  } else {
    using Value = std::remove_pointer_t<T>;
    using Plain = std::remove_const_t<Value>;
    constexpr bool written = !std::is_const_v<Value>;
    if constexpr (std::is_same_v<Plain, double>)
      return a.number(written);
    else if constexpr (std::is_same_v<Plain, std::int32_t>)
      return a.integer(written);
    else if constexpr (std::is_same_v<Plain, std::int64_t>)
      return a.handle();
    else
      return a.text(written);
  }
}

struct Entry {
  const char* name;
  const char* letters;
  void (*entry)();
  /// Makes the arguments; calls the entry unless `dry`.
  double (*call)(void (*)(), Arguments&, Random&, double*);
};

/// Returns the value of an entry that has one, else 0. Without `spent` the arguments are made and no call.
template <class R, class... A>
double call(void (*entry)(), Arguments& arguments, Random& random, double* spent) {
  std::tuple<A...> made{argument<A>(arguments, random)...};
  arguments.lock();
  if (spent == nullptr) return 0;
  double value = 0;
  const double start = spent_time();
  std::apply(
      [&](A... a) {
        if constexpr (std::is_void_v<R>)
          reinterpret_cast<R (*)(A...)>(entry)(a...);
        else
          value = reinterpret_cast<R (*)(A...)>(entry)(a...);
      },
      made);
  *spent = spent_time() - start;
  return value;
}

template <class R, class... A>
Entry row(const char* letters, const char* name, R (*entry)(A...)) {
  return {name, letters, reinterpret_cast<void (*)()>(entry), call<R, A...>};
}

#define E(letters, name) row(letters, #name, tessarel_##name)
// '*' marks entries that can take milliseconds, '.' those that need no fluid.
const std::vector<Entry>& entries() {
  static const std::vector<Entry> all = {
#include "hostile_entries.inc"
  };
  return all;
}
#undef E

/// Names in fields of 20; the last four cannot be selected.
constexpr const char* fluids[] = {
    "methane             n-butane            ",
    "propane             ",
    "water               methanol            n-hexane            ",
    "carbon dioxide      n-decane            ",
    "acetone             chloroform          ",
    "methane             ethane              propane             nitrogen            ",
    "water               ",
    "ethanol             water               ",
    "water               methanol            ethanol             1-butanol           acetone             ",
    "water               methanol            ethanol             1-propanol          1-butanol           "
    "acetone             propane             n-butane            n-hexane            methane             "
    "ethane              n-decane            carbon dioxide      nitrogen            benzene             "
    "toluene             hydrogen            ",
    "no such fluid       ",
    "methane             \x1b[31m\n              ",
    "../fluids/methane   ",
    "                    methane             ",
};

class Host {
 public:
  Host(std::uint64_t seed, bool trace) : random_(seed), trace_(trace) {
    for (Belief& b : beliefs_) tessarel_session_new(&b.session, err_, sizeof err_);
    beliefs_[0].session = 0;
    expected_ = reference();
    use(0);
  }

  void step() {
    ++calls_;
    if (random_.chance(0.01)) use(random_.below(beliefs_.size()));
    if (random_.chance(belief().n == 0 ? 0.2 : 0.003)) select();
    const auto& all = entries();
    const Entry* entry = nullptr;
    do entry = &all[random_.below(all.size())];
    while (entry->letters[0] == '*' && !random_.chance(0.04));
    run(*entry);
    if (calls_ % 50000 == 0 && reference() != expected_) finding("a state has changed in its bits", "");
  }

  [[nodiscard]] long long calls() const { return calls_; }

  int report() {
    if (reference() != expected_) finding("a state has changed in its bits", "");
    std::fprintf(stderr, "%lld calls, %lld of entries that iterate, %lld successes, %d findings; the slowest:\n",
                 calls_, heavy_, successes_, findings_);
    for (const auto& [seconds, what] : slowest_) std::fprintf(stderr, "%9.6f s %s\n", seconds, what.c_str());
    return findings_ == 0 ? 0 : 1;
  }

 private:
  Belief& belief() { return beliefs_[current_]; }

  void use(std::size_t which) {
    current_ = which;
    tessarel_session_use(&belief().session, err_, sizeof err_);
  }

  void finding(const std::string& what, const std::string& where) {
    if (++findings_ <= 50)
      std::fprintf(stderr, "call %lld: %s: %s\n    after %s\n", calls_, what.c_str(), where.c_str(),
                   selection_[current_].c_str());
  }

  void select() {
    const std::string given = fluids[random_.below(random_.chance(0.5) ? 9 : std::size(fluids))];
    constexpr std::size_t field = 20;
    const auto n = static_cast<std::int32_t>(given.size() / field);
    const auto width = random_.of<std::size_t>({field, 32, 100});
    std::string names;
    for (std::size_t k = 0; k < given.size(); k += field)
      names += given.substr(k, field) + std::string(width - field, ' ');
    std::array<double, 20> z{};
    double sum = 0;
    for (std::int32_t i = 0; i < n; ++i) sum += z[static_cast<std::size_t>(i)] = random_.uniform(0, 1);
    for (double& x : z) x /= sum;
    if (random_.chance(0.02)) z[0] += 111.0;
    if (random_.chance(0.15))
      z[random_.below(static_cast<std::size_t>(n))] = random_.of({0.0, 1e-320, -1.0, 1e300, 1e-20, 2.0, std::nan("")});
    const std::int32_t nf = random_.chance(0.95) ? n : random_.of<std::int32_t>({0, -1, 21, INT32_MAX});
    const std::size_t names_len =
        random_.chance(0.97) ? width : random_.of<std::size_t>({0, SIZE_MAX, std::size_t{1} << 40U});
    if (trace_) std::fprintf(stderr, "%lld select %s\n", calls_, names.c_str());
    const double start = spent_time();
    tessarel_setfluid(&nf, names.data(), z.data(), err_, names_len, sizeof err_);
    const std::string_view text(err_, sizeof err_);
    if (text.substr(0, 9) == "No errors") belief().n = nf;
    if (text.substr(0, 13) == "Error opening" || text.substr(0, 10) == "Unexpected") belief().n = 0;
    if (std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }))
      finding("a control character in a text", names);
    std::string what = given;
    for (std::int32_t i = 0; i < n; ++i) what += ' ' + brief(z[static_cast<std::size_t>(i)]);
    what += ": " + std::string(text.substr(0, 60));
    if (text.substr(0, 14) != "TESSAREL error") selection_[current_] = what;
    note_time(spent_time() - start, [&] { return "setfluid " + what; });
  }

  static std::string brief(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
  }

  template <class Describe>
  void note_time(double seconds, Describe&& describe) {
    constexpr std::size_t kept = 10;
    if (slowest_.size() == kept && seconds <= slowest_.back().first) return;
    slowest_.emplace_back(seconds, describe());
    std::sort(slowest_.begin(), slowest_.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    if (slowest_.size() > kept) slowest_.pop_back();
  }

  void run(const Entry& entry) {
    const char* letters = entry.letters;
    const bool heavy = *letters == '*';
    letters += heavy ? 1 : 0;
    const bool free = *letters == '.';
    letters += free ? 1 : 0;
    const Random before = random_;
    const auto prepare = [&](Random& random) { arguments_.forget(), arguments_.start(random, letters, belief()); };
    const auto describe = [&] {
      Random again = before;
      prepare(again);
      entry.call(entry.entry, arguments_, again, nullptr);
      arguments_.unlock();
      return entry.name + arguments_.describe() + "; " + selection_[current_];
    };
    if (trace_) std::fprintf(stderr, "%lld %s\n", calls_, describe().c_str());
    prepare(random_);
    double spent = 0;
    const double value = entry.call(entry.entry, arguments_, random_, &spent);
    heavy_ += heavy ? 1 : 0;
    std::string wrong;
    if (!arguments_.unlock())
      wrong = "written outside an array";
    else if (arguments_.success()) {
      ++successes_;
      // "Tm" leaves the energies alone where the pressure is negative.
      if (const std::size_t place = arguments_.not_finite(); arguments_.pair() != "Tm" && place > 0)
        wrong = "not finite: argument " + std::to_string(place);
      if (!std::isfinite(value)) wrong = "not finite: result";
      if (belief().n == 0 && !free) wrong = "success without a fluid";
    }
    after(std::string_view(entry.name));
    if (!wrong.empty()) finding(wrong, describe());
    note_time(spent, describe);
  }

  /// Sessions that a call has made or made current are not the host's.
  void after(std::string_view name) {
    if (name.substr(0, 8) != "session_") return;
    for (std::int64_t made = last_made_ + 1;; ++made) {
      tessarel_session_free(&made, err_, sizeof err_);
      if (std::string_view(err_, 9) == "No errors") last_made_ = made;
      if (made > last_made_ + 4) break;
    }
    for (std::size_t k = 1; k < beliefs_.size(); ++k) {
      Belief& b = beliefs_[k];
      tessarel_session_use(&b.session, err_, sizeof err_);
      if (std::string_view(err_, 9) == "No errors") continue;
      tessarel_session_new(&b.session, err_, sizeof err_);
      last_made_ = std::max(last_made_, b.session);
      b.n = 0;
      selection_[k] = "a fresh session";
    }
    use(current_);
  }

  /// States of a fresh session.
  std::vector<double> reference() {
    std::vector<double> values;
    std::int64_t fresh = 0;
    tessarel_session_new(&fresh, err_, sizeof err_);
    last_made_ = std::max(last_made_, fresh);
    tessarel_session_use(&fresh, err_, sizeof err_);
    const std::int32_t n = 2, order = 3;
    for (const char* names : {"methane n-butane", "water   methanol"}) {
      const double z[] = {0.6, 0.4};
      tessarel_setfluid(&n, names, z, err_, 8, sizeof err_);
      for (const auto& [pair, a, b] : {std::tuple{"TP", 260.0, 2e6}, std::tuple{"Ph", 3e6, -9e4}}) {
        std::array<double, 100> s{};
        const bool by_t = pair[0] == 'T';
        s[0] = by_t ? a : 0, s[1] = by_t ? b : a, s[4] = by_t ? 0 : b;
        tessarel_tmdprop(pair, &order, &s[0], &s[1], &s[2], &s[3], &s[4], &s[5], &s[6], &s[7], &s[8], &s[9], &s[10],
                         &s[11], &s[12], &s[13], &s[20], &s[40], &s[60], err_, 2, sizeof err_);
        values.insert(values.end(), s.begin(), s.end());
      }
    }
    use(current_);
    tessarel_session_free(&fresh, err_, sizeof err_);
    return values;
  }

  Random random_;
  bool trace_;
  std::array<Belief, 4> beliefs_;
  std::array<std::string, 4> selection_;
  std::size_t current_ = 0;
  Arguments arguments_;
  char err_[300];
  std::vector<double> expected_;
  std::vector<std::pair<double, std::string>> slowest_;
  std::int64_t last_made_ = 3;
  long long calls_ = 0, heavy_ = 0, successes_ = 0;
  int findings_ = 0;
};

}  // namespace
}  // namespace tessarel::hostile

int main(int argc, char** argv) {
  long long calls = 100000, seed = 1;
  double seconds = 0;
  bool trace = false;
  for (int k = 1; k < argc; ++k) {
    const std::string_view option = argv[k];
    const char* value = k + 1 < argc ? argv[k + 1] : "0";
    if (option == "--calls") calls = std::atoll(value), ++k;
    if (option == "--seed") seed = std::atoll(value), ++k;
    if (option == "--seconds") seconds = std::atof(value), calls = 1LL << 60, ++k;
    if (option == "--trace") trace = true;
  }
  // Some entries print.
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 2;
  tessarel::hostile::Host host(static_cast<std::uint64_t>(seed), trace);
  const auto start = tessarel::hostile::Clock::now();
  const auto over = [&] {
    return seconds > 0 && std::chrono::duration<double>(tessarel::hostile::Clock::now() - start).count() > seconds;
  };
  while (host.calls() < calls && (host.calls() % 100 != 0 || !over())) host.step();
  return host.report();
}
