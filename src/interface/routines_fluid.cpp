// Exports of the fluid data: readers, file location, binary parameters, ideal-gas heat capacity.
#include "eos/tables.hpp"
#include "fluid/bips.hpp"
#include "fluid/cp0_module.hpp"
#include "fluid/file_location.hpp"
#include "fluid/fluid_record.hpp"
#include "fluid/kij.hpp"
#include "fluid/readers.hpp"
#include "fluid/selection.hpp"
#include "interface/routines_support.hpp"
#include "platform/fluid_database.hpp"

using namespace tessarel;
using namespace tessarel::routines;
using namespace tessarel::fluid_module;
using boundary::any_null;

namespace {

/// Runs a reader, which returns its message, and lets the evaluations follow what it read.
template <class Body>
void reader(bool null, TextField err, Body&& body) noexcept {
  boundary::guarded(err, [&] {
    if (null) {
      err.assign(boundary::null_argument);
      return;
    }
    const Message message = body();
    eos::update_tables();
    err.assign(message);
  });
}

/// Entry `i` of a host's array of texts.
TextField text_at(char* texts, std::size_t length, std::size_t i) {
  return usable_field(texts, length) ? TextField{texts + i * length, length} : TextField{};
}

/// Reads parameters by `read` and hands the table to the host. Rows that were not read stay as they are.
template <class Read>
void bip_reader(bool null, double* bip, char* cn, std::size_t cn_len, TextField err, Read&& read) noexcept {
  boundary::guarded(err, [&] {
    if (null) {
      err.assign(boundary::null_argument);
      return;
    }
    static BipTable table;
    constexpr double unread = std::numeric_limits<double>::quiet_NaN();
    table.bip.fill(unread);
    err.assign(read(table));
    for (std::size_t k = 0; k < table.bip.size(); ++k) {
      if (table.bip[k] != table.bip[k]) continue;
      bip[k] = table.bip[k];
      for (std::size_t side = 0; side < 2; ++side)
        text_at(cn, cn_len, k + side * table.bip.size()).assign(table.cn[k][side].view());
    }
  });
}

}  // namespace

extern "C" {

void tessarel_readfluids(const char* fluids, char* errormsg, size_t fluids_len, size_t errormsg_len) {
  reader(fluids == nullptr, {errormsg, errormsg_len}, [&] { return readfluids({fluids, fluids_len}); });
}
void tessarel_readfluidsfile(const char* filename, const int32_t* i, char* errormsg, size_t filename_len,
                             size_t errormsg_len) {
  reader(any_null({filename, i}), {errormsg, errormsg_len},
         [&] { return readfluidsfile(input_text(filename, filename_len), *i < 1 ? -1 : *i - 1); });
}
void tessarel_readfluidsdb(const char* fluiddb, const char* filename, const int32_t* i, char* errormsg,
                           size_t fluiddb_len, size_t filename_len, size_t errormsg_len) {
  reader(any_null({fluiddb, filename, i}), {errormsg, errormsg_len}, [&] {
    return readfluidsdb(input_text(fluiddb, fluiddb_len), input_text(filename, filename_len), *i < 1 ? -1 : *i - 1);
  });
}
void tessarel_setassocpar(void) {
  run(false, [] {
    setassocpar();
    eos::update_tables();
  });
}

void tessarel_tolower_tessarel(char* result, const char* str, size_t result_len, size_t str_len) {
  TextField{result, result_len}.assign(tolower_tessarel(input_text(str, str_len)).view());
}
int32_t tessarel_getfluid(const char* fluiddb, const char* name, char* fluiddata, int32_t* status, size_t fluiddb_len,
                          size_t name_len, size_t fluiddata_len) {
  int rows = 0, found = 0;
  run(false, [&] {
    static sqlite::FluidData data;
    rows = sqlite::getfluid(input_text(fluiddb, fluiddb_len), input_text(name, name_len), data, found);
    for (std::size_t k = 0; k < static_cast<std::size_t>(rows); ++k)
      text_at(fluiddata, fluiddata_len, k).assign(data[k].view());
  });
  if (status != nullptr) *status = found;
  return rows;
}
void tessarel_modulepath(char* result, const char* name, size_t result_len, size_t name_len) {
  run(false, [&] { TextField{result, result_len}.assign(modulepath(trimmed(input_text(name, name_len))).view()); });
}
void tessarel_fluidpath(char* result, const char* name, size_t result_len, size_t name_len) {
  run(false, [&] { TextField{result, result_len}.assign(fluidpath(trimmed(input_text(name, name_len))).view()); });
}
void tessarel_searchdirectory(const char* directory, const char* pattern, char* list, size_t directory_len,
                              size_t pattern_len, size_t list_len) {
  run(list == nullptr, [&] {
    static FileList files;
    searchdirectory(trimmed(input_text(directory, directory_len)), trimmed(input_text(pattern, pattern_len)), files);
    for (std::size_t k = 0; k < files.size(); ++k) text_at(list, list_len, k).assign(files[k].view());
  });
}

void tessarel_readbips(char* errormsg, size_t errormsg_len) {
  // Of one component there is nothing to read, and the text stays as it is.
  reader(false, record.n < 2 ? TextField{} : TextField{errormsg, errormsg_len}, [] { return readbips(); });
}
void tessarel_readbipsfile(const char* filename, const int32_t* nrows, double* bip, char* cn, char* errormsg,
                           size_t filename_len, size_t cn_len, size_t errormsg_len) {
  bip_reader(any_null({filename, nrows, bip, cn}), bip, cn, cn_len, {errormsg, errormsg_len},
             [&](BipTable& table) { return readbipsfile(input_text(filename, filename_len), *nrows, table); });
}
void tessarel_readbipsdb(const char* fluiddb, const char* filename, double* bip, char* cn, char* errormsg,
                         size_t fluiddb_len, size_t filename_len, size_t cn_len, size_t errormsg_len) {
  bip_reader(any_null({fluiddb, filename, bip, cn}), bip, cn, cn_len, {errormsg, errormsg_len}, [&](BipTable& table) {
    return readbipsdb(input_text(fluiddb, fluiddb_len), input_text(filename, filename_len), table);
  });
}

#define KIJ(name)                                                                       \
  void tessarel_##name(const int32_t* n, const double* t, double* kij) {                \
    run(!valid_count(n) || any_null({t, kij}), [&] { kij_module::name(*n, *t, kij); }); \
  }
KIJ(ps_calc_kij)
KIJ(calc_dkij_dt)
KIJ(calc_d2kij_dt2)
KIJ(calc_d3kij_dt3)

#define CP0(name)                                                                                \
  double tessarel_##name(const int32_t* i, const double* t) {                                    \
    double cp0 = 0;                                                                              \
    scalar(!valid_place(i) || t == nullptr, &cp0, [&] { return cp0_module::name(*i - 1, *t); }); \
    return cp0;                                                                                  \
  }
CP0(calc_cp0)
CP0(calc_dcp0_dt)
CP0(calc_icp0_dt)
CP0(calc_icp0_t_dt)

#define CP0MIX(name)                                                                                \
  double tessarel_##name(const int32_t* n, const double* x, const double* t) {                      \
    double cp0 = 0;                                                                                 \
    scalar(!valid_count(n) || any_null({x, t}), &cp0, [&] { return cp0_module::name(*n, x, *t); }); \
    return cp0;                                                                                     \
  }
CP0MIX(calc_cp0mix)
CP0MIX(calc_dcp0mix_dt)
CP0MIX(calc_icp0mix_dt)
CP0MIX(calc_icp0mix_t_dt)

}  // extern "C"
