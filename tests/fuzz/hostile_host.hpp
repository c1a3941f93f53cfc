// The arguments of a hostile call: what each letter of an entry's row stands for, where it is stored, and whether the
// library has written beyond it.
//
//   t p v r e w q B   a number: temperature, pressure, volume, density, packing fraction, an energy, a vapour fraction,
//                     a pressure in bar; `_` one that the entry does not read
//   x k A P           fractions (n), ln K (n), a matrix (20 x 20), a table of parameters (n x 9)
//   n i c f o b j m   number of components, component or 0, component, phase code, mode, logical, pivots (20), a size
//   d                 any other number
//   1 3 V M C         results: one, three, n, n^2, n^3 numbers
//   D L J Y Z T U X   ... 2 + 2n, n (2n + 2), n + 2, n (n + 2), 3n, 5000, 20 x 5000, 1000
//   I O 4             integer results: one, a code of which 0 says success, four
//   H W               the number of a session, of which W is a result
//   E                 text out: the report; R: another text, of any content
//   S K G N F         texts in: input pair, key, 'T' 'P' 'B' 'D', 20 names, a path
//   8 9 a g h l z     of three states: their number, 3 numbers, 21 and 12 results, 3 codes, 4 and 4 texts
//   2 5 6             texts out: 2000, 500, 255 of them
//   7 u @             of a root finder: a state vector, a control pair, a forward calculation
//
// A letter with a pointer that is not const is both read and written.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HOSTILE_ASAN 1
#endif
#endif
#if defined(HOSTILE_ASAN) || defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(a, b) ((void)(a), (void)(b))
#define ASAN_UNPOISON_MEMORY_REGION(a, b) ((void)(a), (void)(b))
#endif

namespace tessarel::hostile {

/// SplitMix64: the same numbers everywhere.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t bits() {
    std::uint64_t z = state_ += 0x9e3779b97f4a7c15U;
    z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31U);
  }
  std::size_t below(std::size_t n) { return static_cast<std::size_t>(bits() % n); }
  double uniform(double a, double b) { return a + (b - a) * static_cast<double>(bits() >> 11U) * 0x1p-53; }
  double decades(double a, double b) { return std::pow(10.0, uniform(a, b)); }
  bool chance(double p) { return uniform(0, 1) < p; }
  template <class T, std::size_t N>
  T of(const T (&list)[N]) {
    return list[below(N)];
  }

 private:
  std::uint64_t state_;
};

/// What the host believes of its current session.
struct Belief {
  std::int64_t session = 0;
  std::int32_t n = 0;  ///< components; 0 with nothing selected
};

/// One argument: its storage between two guards.
class Slot {
 public:
  static constexpr std::size_t guard = 64;
  static constexpr unsigned char mark = 0xA5;

  /// Storage of exactly `size` bytes, with whatever content.
  unsigned char* reserve(std::size_t size, std::size_t alignment) {
    const std::size_t padded = (size + alignment - 1) / alignment * alignment;
    ASAN_UNPOISON_MEMORY_REGION(bytes_.data(), bytes_.size());
    if (bytes_.size() < padded + 2 * guard) bytes_.assign(padded + 2 * guard, 0);
    // The content ends where the guard begins.
    begin_ = guard + padded - size;
    size_ = size;
    std::memset(bytes_.data(), mark, begin_);
    std::memset(bytes_.data() + begin_ + size, mark, guard);
    return bytes_.data() + begin_;
  }
  void lock() {
    // A shadow byte stands for eight: what lies in front of a text in its first eight is left to the marks.
    ASAN_POISON_MEMORY_REGION(bytes_.data(), begin_ / 8 * 8);
    ASAN_POISON_MEMORY_REGION(bytes_.data() + begin_ + size_, guard);
  }
  bool unlock() {
    ASAN_UNPOISON_MEMORY_REGION(bytes_.data(), bytes_.size());
    for (std::size_t k = 0; k < begin_; ++k)
      if (bytes_[k] != mark) return false;
    for (std::size_t k = 0; k < guard; ++k)
      if (bytes_[begin_ + size_ + k] != mark) return false;
    return true;
  }
  template <class T>
  T* as() {
    return reinterpret_cast<T*>(bytes_.data() + begin_);
  }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  std::vector<unsigned char> bytes_;
  std::size_t begin_ = guard, size_ = 0;
};

/// The arguments of one call, made one by one in the order in which the entry takes them.
class Arguments {
 public:
  void start(Random& random, std::string_view letters, const Belief& belief) {
    random_ = &random;
    letters_ = letters;
    belief_ = belief;
    count_ = belief.n;
    next_ = used_ = lengths_ = taken_ = 0;
    hostile_ = random.chance(0.3);
    pair_ = {};
  }

  double* number(bool written) {
    const char letter = take();
    const std::size_t size = size_of(letter);
    const bool result = std::strchr("13VMCDLJYZTUXag", letter) != nullptr;
    double* values = slot<double>(size, written);
    if (result)
      std::fill_n(values, size, 7.0);
    else if (letter == 'x')
      fractions(values, size);
    else
      for (std::size_t k = 0; k < size; ++k) values[k] = value(letter, size > 1 ? 0.02 : 0.25, k);
    return pass(values);
  }

  std::int32_t* integer(bool written) {
    const char letter = take();
    const std::size_t size = letter == '4' ? 4 : letter == 'j' ? 20 : letter == 'u' ? 2 : letter == 'h' ? 3 : 1;
    auto* values = slot<std::int32_t>(size, written);
    if (letter == 'O') code_ = values;
    for (std::size_t k = 0; k < size; ++k) values[k] = whole(letter, k);
    const bool valid_count = letter == 'n' && *values >= 1 && *values <= belief_.n;
    if (valid_count) count_ = *values;
    return pass(values);
  }

  std::int64_t* handle() {
    const char letter = take();
    if (letter == '8') {
      auto* count = slot<std::int64_t>(1, false);
      *count = hostile_ ? random_->of<std::int64_t>({3, 3, 0, -1, INT64_MAX, INT64_MIN}) : 3;
      return pass(count);
    }
    auto* value = slot<std::int64_t>(1, false);
    *value = random_->of<std::int64_t>({belief_.session, 0, 1, 2, 3, -1, 99, INT64_MAX, INT64_MIN});
    return pass(value);
  }

  char* text(bool written) {
    const char letter = take();
    std::string content;
    std::size_t length = 0;
    if (written) {
      length = letter == 'E' && !random_->chance(0.1) ? 100 : random_->of<std::size_t>({0, 1, 5, 9, 80, 300});
      content.assign(length, 'e');
    } else {
      content = input(letter);
      length = content.size();
      if (letter == 'N') content.append(19 * length, ' ');
    }
    if (written)
      content.assign(length * (letter == '5'   ? 500U
                               : letter == '6' ? 255U
                               : letter == '2' ? 2000U
                               : letter == 'z' ? 4U
                                               : 1U),
                     'e');
    char* field = slot<char>(content.size(), false);
    std::memcpy(field, content.data(), content.size());
    const bool negative = random_->chance(0.01);
    field = letter == 'E' && !hostile_ ? field : pass(field);
    if (letter == 'E' && field != nullptr && !negative && length >= 9) report_ = {field, length};
    length_[lengths_++] = negative ? SIZE_MAX - random_->below(3) : length;
    return field;
  }
  std::size_t length() { return length_[taken_++]; }

  [[nodiscard]] bool null_chance() { return hostile_ && random_->chance(0.03); }
  char take() { return letters_[next_++]; }

  void lock() {
    for (std::size_t k = 0; k < used_; ++k) slots_[k].lock();
  }
  bool unlock() {
    bool intact = true;
    for (std::size_t k = 0; k < used_; ++k) intact = slots_[k].unlock() && intact;
    return intact;
  }
  void forget() { report_ = {}, code_ = nullptr; }

  /// The report begins with "No errors", or its code is 0.
  [[nodiscard]] bool success() const {
    return report_.substr(0, 9) == "No errors" || (code_ != nullptr && *code_ == 0);
  }
  [[nodiscard]] std::string_view report() const { return report_; }
  [[nodiscard]] std::string_view pair() const { return pair_; }
  /// The argument, from 1, that has come back with a number that is not finite; 0 if none has.
  std::size_t not_finite() {
    for (std::size_t k = 0; k < used_; ++k)
      for (std::size_t j = 0; written_[k] && j < slots_[k].size() / sizeof(double); ++j)
        if (!std::isfinite(slots_[k].as<double>()[j])) return k + 1;
    return 0;
  }

  /// What has been handed over, for a report.
  std::string describe() {
    std::string out;
    for (std::size_t k = 0; k < used_; ++k) {
      Slot& s = slots_[k];
      char one[40];
      out += ' ';
      if (null_[k]) {
        out += "null";
      } else if (kind_[k] == 'd') {
        for (std::size_t j = 0; j < std::min<std::size_t>(s.size() / 8, 20); ++j)
          out += (std::snprintf(one, sizeof one, j > 0 ? ",%.17g" : "%.17g", s.as<double>()[j]), one);
      } else if (kind_[k] == 'i') {
        out += std::to_string(*s.as<std::int32_t>());
      } else if (kind_[k] == 'h') {
        out += std::to_string(*s.as<std::int64_t>());
      } else {
        out += "\"" + std::string(s.as<char>(), std::min<std::size_t>(s.size(), 60)) + "\"";
      }
    }
    return out;
  }

 private:
  template <class T>
  T* slot(std::size_t count, bool written) {
    kind_[used_] = std::is_same_v<T, double> ? 'd' : std::is_same_v<T, std::int32_t> ? 'i' : sizeof(T) == 8 ? 'h' : 'c';
    written_[used_] = written && std::is_same_v<T, double>;
    null_[used_] = false;
    return reinterpret_cast<T*>(slots_[used_++].reserve(count * sizeof(T), alignof(T)));
  }
  template <class T>
  T* pass(T* pointer) {
    return null_chance() ? (null_[used_ - 1] = true, written_[used_ - 1] = false, nullptr) : pointer;
  }

  [[nodiscard]] std::size_t size_of(char letter) const {
    const auto n = static_cast<std::size_t>(count_ > 0 ? count_ : 20);
    switch (letter) {
      case 'x':
      case 'k':
      case 'V':
        return n;
      case 'M':
        return n * n;
      case 'C':
        return n * n * n;
      case 'D':
        return 2 + 2 * n;
      case 'L':
        return n * (2 * n + 2);
      case 'J':
        return n + 2;
      case 'Y':
        return n * (n + 2);
      case 'Z':
        return 3 * n;
      case 'P':
        return 9 * n;
      case 'T':
        return 5000;
      case 'U':
        return 100000;
      case 'A':
        return 400;
      case 'X':
        return 1000;
      case '7':
        return 7;
      case 'a':
        return 21;
      case 'g':
        return 12;
      case '9':
      case '3':
        return 3;
      default:
        return 1;
    }
  }

  double extreme() {
    constexpr double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
    switch (random_->below(4)) {
      case 0:
        return random_->of({nan, inf, -inf, 0.0, -0.0, -1.0, 1e308, -1e308, 5e-324, 1e-320, 1e-300, 1e300});
      case 1:
        return random_->decades(-320, 308) * (random_->chance(0.3) ? -1 : 1);
      case 2:
        return -random_->decades(-6, 6);
      default: {
        const std::uint64_t bits = random_->bits();
        double any = 0;
        std::memcpy(&any, &bits, sizeof any);
        return any;
      }
    }
  }

  double value(char letter, double hostility, std::size_t k) {
    if (letter != '_' && hostile_ && random_->chance(hostility)) return extreme();
    switch (letter) {
      case 't':
        return random_->chance(0.1) ? random_->decades(-1, 5) : random_->uniform(90, 900);
      case 'p':
        return random_->decades(0, 8.5);
      case 'v':
        return random_->decades(-4.6, 0.5);
      case 'r':
        return random_->decades(-8, -1.7);
      case 'e':
        return random_->decades(-6, -0.13);
      case 'q':
        return random_->chance(0.2) ? random_->of({0.0, 1.0}) : random_->uniform(0, 1);
      case 'B':
        return random_->decades(-3, 3.5);
      case 'k':
        return random_->uniform(-8, 8);
      case 'w':
        return random_->chance(0.5) ? random_->uniform(-3e5, 1e5) : random_->uniform(-300, 300);
      case '9':
        return value(random_->of({'t', 'p', 'v', 'w', 'q'}), hostility, k);
      case 'P':
        return parameter(k / (size_of('P') / 9));
      default:
        return random_->uniform(-2, 2);
    }
  }
  double parameter(std::size_t column) {
    constexpr double low[] = {15, 1, 2.8, 150, 1500, 0.01, 0, 0, 0}, high[] = {90, 3, 4, 320, 3000, 0.1, 3, 5, 3};
    return column > 3 && random_->chance(0.5) ? 0.0 : random_->uniform(low[column], high[column]);
  }

  void fractions(double* x, std::size_t n) {
    double sum = 0;
    for (std::size_t k = 0; k < n; ++k)
      sum += x[k] = random_->chance(0.1) ? random_->decades(-18, -3) : random_->uniform(0, 1);
    for (std::size_t k = 0; k < n; ++k) x[k] = sum > 0 ? x[k] / sum : x[k];
    if (!hostile_) return;
    const std::size_t at = random_->below(n);
    if (random_->chance(0.2)) x[at] = 0;
    if (random_->chance(0.2)) x[at] = extreme();
    if (random_->chance(0.02)) std::fill_n(x, n, 0.0);
  }

  std::int32_t whole(char letter, std::size_t k) {
    if (letter == 'l') return hostile_ ? random_->of<std::int32_t>({4, 0, -1, INT32_MIN}) : 4;
    if (hostile_ && random_->chance(0.1)) return random_->of<std::int32_t>({0, -1, -2, 21, 1000, INT32_MAX, INT32_MIN});
    const auto n = static_cast<std::size_t>(belief_.n > 0 ? belief_.n : 1);
    switch (letter) {
      case 'n':
        return static_cast<std::int32_t>(random_->chance(0.8) ? n : 1 + random_->below(n));
      case 'i':
        return static_cast<std::int32_t>(random_->below(static_cast<std::size_t>(count_ > 0 ? count_ : 1) + 1));
      case 'c':
        return static_cast<std::int32_t>(1 + random_->below(n));
      case 'f':
        return random_->of<std::int32_t>({1, 2, -1});
      case 'o':
        return static_cast<std::int32_t>(random_->below(7));
      case 'm':
        return static_cast<std::int32_t>(1 + random_->below(20));
      case 'u':
        return static_cast<std::int32_t>(1 + random_->below(6));
      case 'b':
        return random_->chance(0.02) ? -1 : 0;
      case 'j':
        return static_cast<std::int32_t>(1 + (k * 7 + random_->below(3)) % 20);
      default:
        return 77;
    }
  }

  std::string input(char letter) {
    if (hostile_ && random_->chance(0.1)) {
      std::string any(random_->of<std::size_t>({0, 1, 3, 40, 5000}), ' ');
      for (char& c : any) c = static_cast<char>(random_->bits());
      return any;
    }
    switch (letter) {
      case 'S': {
        const char* pair = random_->of({"TP", "Tv", "vP", "Ts", "vu", "vh", "vs",     "Pu",     "Ph",     "Ps",
                                        "hs", "Pq", "Tq", "vq", "Pm", "Tm", "TP_new", "vu_new", "Ph_new", "Tv_old"});
        pair_ = {pair, 2};
        return std::string(pair) + random_->of({"", "", " Lph", " Vph", " vap", " liq", " all", "    "});
      }
      case 'K':
        return random_->of({"omega", "mseg", "sigma", "epsil", "dipole", "quapole", "polariz", "molmas", "tmin", "tmax",
                            "parat", "saftpar", "cp0_a", "cp0_d", "delhf0", "eps_hb", "kap_hb", "nonsense"});
      case 'G':
        return random_->of({"T", "P", "B", "D"});
      default:
        return random_->of(
            {"TESSAREL", "/tmp/", "*", "*.saf", "/nowhere/none.saf", "methane.saf", "/dev/zero", "../x"});
    }
  }

  Random* random_ = nullptr;
  std::string_view letters_, report_, pair_;
  Belief belief_;
  std::int32_t count_ = 0;
  std::int32_t* code_ = nullptr;
  std::size_t next_ = 0, used_ = 0, lengths_ = 0, taken_ = 0;
  bool hostile_ = false;
  std::array<std::size_t, 8> length_{};
  std::array<Slot, 24> slots_;
  std::array<char, 24> kind_{};
  std::array<bool, 24> written_{}, null_{};
};

}  // namespace tessarel::hostile
