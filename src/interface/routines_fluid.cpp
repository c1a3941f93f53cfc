// Exports of the fluid data: readers, file location, binary parameters, ideal-gas heat capacity.
#include <cmath>
#include <memory>

#include "fluid/bips.hpp"
#include "fluid/combining_rules.hpp"
#include "fluid/file_location.hpp"
#include "fluid/fluid_record.hpp"
#include "fluid/ideal_gas.hpp"
#include "fluid/kij.hpp"
#include "fluid/readers.hpp"
#include "interface/routines_support.hpp"
#include "platform/fluid_database.hpp"

using namespace tessarel;
using namespace tessarel::interface;
using fluid::BipTable;

namespace {

/// Runs a reader, which returns its message, and updates the model to what it read.
template <class Body>
void reader(Session& session, bool null, TextField err, Body&& body) noexcept {
  guarded(err, [&] {
    if (null) {
      err.assign(null_argument);
      return;
    }
    const Message message = body();
    session.update();
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
  guarded(err, [&] {
    if (null) {
      err.assign(null_argument);
      return;
    }
    const auto table = std::make_unique<BipTable>();
    table->bip.fill(not_a_number);  // the mark of a row that was not read
    err.assign(read(*table));
    for (std::size_t k = 0; k < table->bip.size(); ++k) {
      if (std::isnan(table->bip[k])) continue;
      bip[k] = table->bip[k];
      for (std::size_t side = 0; side < 2; ++side)
        text_at(cn, cn_len, k + side * table->bip.size()).assign(table->cn[k][side].view());
    }
  });
}

}  // namespace

extern "C" {

void tessarel_readfluids(const char* fluids, char* errormsg, size_t fluids_len, size_t errormsg_len) {
  Session& session = current_session();
  reader(session, fluids == nullptr, {errormsg, errormsg_len}, [&] {
    return fluid::readfluids({fluids, fluids_len}, session.model.parameters, session.sources);
  });
}
void tessarel_readfluidsfile(const char* filename, const int32_t* i, char* errormsg, size_t filename_len,
                             size_t errormsg_len) {
  Session& session = current_session();
  reader(session, any_null({filename, i}), {errormsg, errormsg_len}, [&] {
    return fluid::readfluidsfile(input_text(filename, filename_len), *i < 1 ? -1 : *i - 1, session.model.parameters,
                                 session.sources.text);
  });
}
void tessarel_readfluidsdb(const char* fluiddb, const char* filename, const int32_t* i, char* errormsg,
                           size_t fluiddb_len, size_t filename_len, size_t errormsg_len) {
  Session& session = current_session();
  reader(session, any_null({fluiddb, filename, i}), {errormsg, errormsg_len}, [&] {
    return fluid::readfluidsdb(input_text(fluiddb, fluiddb_len), input_text(filename, filename_len),
                               *i < 1 ? -1 : *i - 1, session.model.parameters, session.sources);
  });
}
void tessarel_setassocpar(void) {
  Session& session = current_session();
  run(false, [&] {
    fluid::setassocpar(session.model.parameters);
    session.update();
  });
}

void tessarel_tolower_tessarel(char* result, const char* str, size_t result_len, size_t str_len) {
  TextField{result, result_len}.assign(fluid::tolower_tessarel(input_text(str, str_len)).view());
}
int32_t tessarel_getfluid(const char* fluiddb, const char* name, char* fluiddata, int32_t* status, size_t fluiddb_len,
                          size_t name_len, size_t fluiddata_len) {
  int rows = 0, found = 0;
  run(false, [&] {
    const auto data = std::make_unique_for_overwrite<platform::FluidData>();
    platform::FluidDatabase& database = current_session().sources.database;
    rows = database.getfluid(input_text(fluiddb, fluiddb_len), input_text(name, name_len), *data, found);
    for (std::size_t k = 0; k < static_cast<std::size_t>(rows); ++k)
      text_at(fluiddata, fluiddata_len, k).assign((*data)[k].view());
  });
  if (status != nullptr) *status = found;
  return rows;
}
void tessarel_modulepath(char* result, const char* name, size_t result_len, size_t name_len) {
  run(false, [&] {
    TextField{result, result_len}.assign(fluid::modulepath(trimmed(input_text(name, name_len))).view());
  });
}
void tessarel_fluidpath(char* result, const char* name, size_t result_len, size_t name_len) {
  run(false, [&] {
    TextField{result, result_len}.assign(fluid::fluidpath(trimmed(input_text(name, name_len))).view());
  });
}
void tessarel_searchdirectory(const char* directory, const char* pattern, char* list, size_t directory_len,
                              size_t pattern_len, size_t list_len) {
  run(list == nullptr, [&] {
    const auto files = std::make_unique<fluid::FileList>();
    fluid::searchdirectory(trimmed(input_text(directory, directory_len)), trimmed(input_text(pattern, pattern_len)),
                           *files);
    for (std::size_t k = 0; k < files->size(); ++k) text_at(list, list_len, k).assign((*files)[k].view());
  });
}

void tessarel_readbips(char* errormsg, size_t errormsg_len) {
  // Of one component there is nothing to read, and the text stays as it is.
  Session& session = current_session();
  reader(session, false, session.n() < 2 ? TextField{} : TextField{errormsg, errormsg_len}, [&] {
    return fluid::readbips(session.model.parameters, session.sources.bips, session.sources.directory.view());
  });
}
void tessarel_readbipsfile(const char* filename, const int32_t* nrows, double* bip, char* cn, char* errormsg,
                           size_t filename_len, size_t cn_len, size_t errormsg_len) {
  bip_reader(any_null({filename, nrows, bip, cn}), bip, cn, cn_len, {errormsg, errormsg_len},
             [&](BipTable& table) { return fluid::readbipsfile(input_text(filename, filename_len), *nrows, table); });
}
void tessarel_readbipsdb(const char* fluiddb, const char* filename, double* bip, char* cn, char* errormsg,
                         size_t fluiddb_len, size_t filename_len, size_t cn_len, size_t errormsg_len) {
  bip_reader(any_null({fluiddb, filename, bip, cn}), bip, cn, cn_len, {errormsg, errormsg_len}, [&](BipTable& table) {
    return fluid::readbipsdb(input_text(fluiddb, fluiddb_len), input_text(filename, filename_len),
                             current_session().sources.database, table);
  });
}

#define KIJ(name)                                                                                                     \
  void tessarel_##name(const int32_t* n, const double* t, double* kij) {                                              \
    const Session& session = current_session();                                                                       \
    run(!valid_count(session, n) || any_null({t, kij}), [&] { fluid::name(session.model.parameters, *n, *t, kij); }); \
  }
KIJ(ps_calc_kij)
KIJ(calc_dkij_dt)
KIJ(calc_d2kij_dt2)
KIJ(calc_d3kij_dt3)

#define CP0(name)                                                              \
  double tessarel_##name(const int32_t* i, const double* t) {                  \
    double cp0 = 0;                                                            \
    const Session& session = current_session();                                \
    scalar(!valid_place(session, i) || t == nullptr, &cp0,                     \
           [&] { return fluid::name(session.model.parameters, *i - 1, *t); }); \
    return cp0;                                                                \
  }
CP0(calc_cp0)
CP0(calc_dcp0_dt)
CP0(calc_icp0_dt)
CP0(calc_icp0_t_dt)

#define CP0MIX(name)                                                           \
  double tessarel_##name(const int32_t* n, const double* x, const double* t) { \
    double cp0 = 0;                                                            \
    const Session& session = current_session();                                \
    scalar(!valid_count(session, n) || any_null({x, t}), &cp0,                 \
           [&] { return fluid::name(session.model.parameters, *n, x, *t); });  \
    return cp0;                                                                \
  }
CP0MIX(calc_cp0mix)
CP0MIX(calc_dcp0mix_dt)
CP0MIX(calc_icp0mix_dt)
CP0MIX(calc_icp0mix_t_dt)

}  // extern "C"
