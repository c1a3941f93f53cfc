// Tessarel for C++: a session as an object, states as values, failures as exceptions. Header-only, on top of the C
// interface; C++17 (the names in the braces of the example are C++20).
//
//   tessarel::Session gas({"methane", "ethane"}, {0.9, 0.1});
//   const tessarel::State s = gas.state("TP Vph", {.t = 300, .p = 50e5});
//   std::printf("%g m3/mol, %g J/mol\n", s.v, s.h);
//
// Units are molar SI throughout: K, Pa, m3/mol, J/mol, J/(mol K).
//
// A session can be moved, not copied (see clone), and handed from thread to thread; one thread at a time uses it. Each
// call makes the session current for its duration and restores what was current before. A thread that makes many calls
// keeps the session current with `const tessarel::Session::Use use(session);`, which saves that exchange.
#ifndef TESSAREL_TESSAREL_HPP
#define TESSAREL_TESSAREL_HPP

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tessarel/routines.h"
#include "tessarel/tessarel.h"

namespace tessarel {

/// A failure; what() is the text of the library.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The two known properties of a state, by name; the others are not read.
struct Known {
  double t = 0;  ///< temperature [K]
  double p = 0;  ///< pressure [Pa]
  double v = 0;  ///< molar volume [m3/mol]
  double u = 0;  ///< internal energy [J/mol]
  double h = 0;  ///< enthalpy [J/mol]
  double s = 0;  ///< entropy [J/(mol K)]
  double q = 0;  ///< mole fraction of vapour
};

/// A state. h and u include the heat of formation: the reference is the ideal gas at 298.15 K and 1e5 Pa.
struct State {
  double t, p, v, u, h, s, q;  ///< as in Known
  double cv;                   ///< isochoric heat capacity [J/(mol K)]
  double dpdt, dpdv;           ///< at constant v [Pa/K], at constant T [Pa mol/m3]
  std::vector<double> lnphi;   ///< logarithms of the fugacity coefficients
  std::vector<double> x, y;    ///< mole fractions of liquid and vapour, where the pair leaves them (tessarel_tmdprop)
};

/// Phases at given temperature and pressure; of one phase x and y are the feed and `beta` has no meaning.
struct Split {
  bool two_phases;
  double beta;               ///< mole fraction of the vapour, the phase of larger molar volume
  std::vector<double> x, y;  ///< mole fractions of liquid and vapour
};

struct CriticalPoint {
  double tc, pc, rhoc;  ///< K, Pa, mol/m3
};

/// Further properties of a stable phase.
struct Derived {
  double cp;     ///< isobaric heat capacity [J/(mol K)]
  double w;      ///< speed of sound [m/s]
  double jt;     ///< Joule-Thomson coefficient [K/Pa]
  double kappa;  ///< isothermal compressibility [1/Pa]
  double alpha;  ///< thermal expansion [1/K]
  double g;      ///< Gibbs energy [J/mol]
};

/// Data of the selected fluid.
struct FluidInfo {
  double molar_mass;  ///< [kg/mol]
  double tc, pc;      ///< critical temperature [K], pressure [Pa]; of a mixture averages over the mole fractions
  double tmin, tmax;  ///< range of temperature shared by the components [K]
};

class Session {
 public:
  /// Makes a session current on this thread for the life of the object.
  class Use {
   public:
    explicit Use(const Session& session) {
      require(session.number_ != 0);
      tessarel_session_current(&before_);
      changed_ = before_ != session.number_;
      if (changed_) call([&](char* err, std::size_t size) { tessarel_session_use(&session.number_, err, size); });
    }
    ~Use() {
      if (!changed_) return;
      release();
      char err[1];
      tessarel_session_use(&before_, err, 0);  // refused when that session was freed or taken meanwhile
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    std::int64_t before_ = 0;
    bool changed_ = false;
  };

  /// A session with no fluid selected.
  Session() {
    call([&](char* err, std::size_t size) { tessarel_session_new(&number_, err, size); });
  }
  Session(const std::vector<std::string>& names, const std::vector<double>& z) : Session() { select(names, z); }
  Session(Session&& other) noexcept : number_(std::exchange(other.number_, 0)), z_(std::move(other.z_)) {}
  Session& operator=(Session&& other) noexcept {
    std::swap(number_, other.number_);
    std::swap(z_, other.z_);
    return *this;
  }
  /// Frees the session. It must not be current on another thread.
  ~Session() {
    if (number_ == 0) return;
    std::int64_t current = 0;
    tessarel_session_current(&current);
    if (current == number_) release();
    char err[1];
    tessarel_session_free(&number_, err, 0);
  }

  /// Another session with the same selection and parameters, for another thread.
  [[nodiscard]] Session clone() const {
    const Use use(*this);
    std::int64_t number = 0;
    call([&](char* err, std::size_t size) { tessarel_session_clone(&number_, &number, err, size); });
    return {number, z_};
  }

  /// The number of the session in the C interface, for calls that do not select; 0 after a move, when the object must
  /// not be used.
  [[nodiscard]] std::int64_t number() const noexcept { return number_; }

  /// Selects a fluid or mixture by the names of its components and their mole fractions; with the same names only the
  /// composition changes.
  void select(const std::vector<std::string>& names, const std::vector<double>& z) {
    if (names.size() != z.size()) throw Error("TESSAREL error: as many mole fractions as names are needed...");
    std::size_t width = 1;
    for (const std::string& name : names) width = name.size() > width ? name.size() : width;
    std::string fields;
    for (const std::string& name : names) fields += name + std::string(width - name.size(), ' ');
    const auto count = static_cast<std::int32_t>(names.size() < 1000 ? names.size() : 1000);
    require(number_ != 0);
    const Use use(*this);
    z_.clear();  // after a failure nothing is selected
    call([&](char* err, std::size_t size) { tessarel_setfluid(&count, fields.data(), z.data(), err, width, size); });
    z_ = z;
    constexpr double mark = 111, threshold = 100;  // of the simplified model, see tessarel_setfluid
    if (z_[0] > threshold) z_[0] -= mark;
  }

  /// The state that `pair` names ("TP Lph", "Ph Vph" ..., see tessarel_tmdprop) at the two properties in `known`.
  [[nodiscard]] State state(std::string_view pair, const Known& known) const {
    require(!z_.empty());
    const Use use(*this);
    State r{known.t, known.p, known.v, known.u, known.h, known.s, known.q, 0, 0, 0, std::vector<double>(z_.size()),
            z_,      z_};
    const std::int32_t order = 3;
    double d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0;
    call([&](char* err, std::size_t size) {
      tessarel_tmdprop(pair.data(), &order, &r.t, &r.p, &r.v, &r.u, &r.h, &r.s, &r.q, &r.cv, &r.dpdt, &r.dpdv, &d2pdt2,
                       &d2pdv2, &d2pdtdv, &dcvdt, r.x.data(), r.y.data(), r.lnphi.data(), err, pair.size(), size);
    });
    // From the engineering units of the C interface, which are those of the phase named; of the whole where it is
    // absent.
    const std::string_view suffix = pair.size() >= 6 ? pair.substr(3, 3) : std::string_view{};
    const std::vector<double>& of = suffix == "vap" ? r.y : suffix == "liq" ? r.x : z_;
    const double mass = of == std::vector<double>(of.size(), 0.0) ? molar_mass() : molar_mass(of);
    r.t += 273.15;
    r.p *= 1e5;
    r.v *= mass;
    for (double* energy : {&r.u, &r.h, &r.s, &r.cv}) *energy *= 1000.0 * mass;
    r.dpdv /= mass;
    return r;
  }

  /// One phase or two at `t` [K] and `p` [Pa], from no start.
  [[nodiscard]] Split flash(double t, double p) const {
    require(!z_.empty());
    const Use use(*this);
    Split r{true, 0, std::vector<double>(z_.size()), std::vector<double>(z_.size())};
    try {
      call([&](char* err, std::size_t size) {
        tessarel_calc_pt_flash(&t, &p, r.x.data(), r.y.data(), &r.beta, err, size);
      });
    } catch (const Error& error) {
      if (std::string_view(error.what()) != "Michelsen's Flash calculation: no phase split detected...") throw;
      r = {false, 0, z_, z_};
    }
    return r;
  }

  /// The true critical point: tc [K], pc [Pa], rhoc [mol/m3].
  [[nodiscard]] CriticalPoint critical_point() const {
    require(!z_.empty());
    const Use use(*this);
    CriticalPoint c{};
    call([&](char* err, std::size_t size) { tessarel_criticalpoint(&c.tc, &c.pc, &c.rhoc, err, size); });
    return c;
  }

  /// Of a phase of composition `x` at `t` [K] and `v` [m3/mol]; see tessarel_derived for what is no stable phase.
  [[nodiscard]] Derived derived(const std::vector<double>& x, double t, double v) const {
    require(!z_.empty());
    if (x.size() != z_.size()) throw Error("TESSAREL error: as many mole fractions as components are needed...");
    const Use use(*this);
    Derived d{};
    call([&](char* err, std::size_t size) {
      tessarel_derived(x.data(), &t, &v, &d.cp, &d.w, &d.jt, &d.kappa, &d.alpha, &d.g, err, size);
    });
    return d;
  }
  [[nodiscard]] Derived derived(double t, double v) const { return derived(z_, t, v); }

  /// A parameter of component `i`, counted from 1; keys and effects as tessarel_setparameter.
  [[nodiscard]] double parameter(std::string_view key, std::int32_t i) const {
    const Use use(*this);
    double value = 0;
    call([&](char* err, std::size_t size) { tessarel_getparameter(key.data(), &i, &value, err, key.size(), size); });
    return value;
  }
  void set_parameter(std::string_view key, std::int32_t i, double value) {
    const Use use(*this);
    call([&](char* err, std::size_t size) { tessarel_setparameter(key.data(), &i, &value, err, key.size(), size); });
  }
  void set_kij(std::int32_t i, std::int32_t j, double kij) {
    const Use use(*this);
    call([&](char* err, std::size_t size) { tessarel_setkij(&i, &j, &kij, err, size); });
  }

  [[nodiscard]] FluidInfo info() const {
    require(!z_.empty());
    const Use use(*this);
    FluidInfo f{};
    tessarel_fluidinfo(nullptr, nullptr, &f.tc, &f.pc, &f.tmin, &f.tmax, nullptr, nullptr, nullptr, nullptr, nullptr);
    f.molar_mass = molar_mass();
    return f;
  }

 private:
  Session(std::int64_t number, std::vector<double> z) : number_(number), z_(std::move(z)) {}

  /// Leaves this thread on session 0.
  static void release() {
    const std::int64_t none = 0;
    char err[1];
    tessarel_session_use(&none, err, 0);
  }

  /// Runs `body(err, size)` and turns a message into an exception.
  template <class Body>
  static void call(Body&& body) {
    std::array<char, 320> err{};
    body(err.data(), err.size());
    const std::string_view text(err.data(), err.size());
    const std::size_t last = text.find_last_not_of(' ');
    const std::string_view message = text.substr(0, last == std::string_view::npos ? 0 : last + 1);
    if (message != "No errors") throw Error(std::string(message));
  }
  static void require(bool selected) {
    if (!selected) throw Error("TESSAREL error: no fluid selected...");
  }
  /// [kg/mol]; the session is current.
  [[nodiscard]] double molar_mass() const { return molar_mass(z_); }
  [[nodiscard]] static double molar_mass(const std::vector<double>& x) {
    std::array<double, 20> components{};
    tessarel_fluidinfo(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, components.data(), nullptr, nullptr,
                       nullptr, nullptr);
    double mass = 0;
    for (std::size_t i = 0; i < x.size(); ++i) mass += x[i] * components[i];
    return mass;
  }

  std::int64_t number_ = 0;
  std::vector<double> z_;
};

}  // namespace tessarel

#endif
