// Create-or-adopt for the facade's records: a create operation refused because its name is in use
// takes the object of that name, found by one of the facade's lookups by name (handed to
// SecondGenerationCall::adoptingNamed). A lookup that answers an id makes the caller's record
// `taken` with that id; a lookup that answers the whole record writes the caller's record itself,
// as it does when called on its own.
#pragma once

#include <string>
#include <utility>

#include "SecondGenerationCall.h"
#include "ZrManageHuawei.h"

template <typename Record>
class AdoptionByName final : public Adoption {
 public:
  using IdLookup = CXoError (ZrManageHuawei::*)(std::string const& name, std::string& id, std::string vstoreId);
  using RecordLookup = CXoError (ZrManageHuawei::*)(Record& found, std::string const& name, std::string vstoreId);

  // The lookup is made for taken.name in taken.vstoreId.
  AdoptionByName(ZrManageHuawei& facade, IdLookup lookup, Record& out, Record taken, Rendering rendering)
      : m_facade(facade), m_idLookup(lookup), m_out(out), m_taken(std::move(taken)), m_rendering(rendering) {}
  AdoptionByName(ZrManageHuawei& facade, RecordLookup lookup, Record& out, Record taken, Rendering rendering)
      : m_facade(facade), m_recordLookup(lookup), m_out(out), m_taken(std::move(taken)), m_rendering(rendering) {}

  CXoError lookUp(std::string& id) override {
    if (m_idLookup != nullptr) return (m_facade.*m_idLookup)(m_taken.name, id, m_taken.vstoreId);
    const CXoError found = (m_facade.*m_recordLookup)(m_out, m_taken.name, m_taken.vstoreId);
    if (!found.IsError()) id = m_out.id;
    return found;
  }
  void take(const std::string& id) override {
    if (m_idLookup == nullptr) return;
    m_out = m_taken;
    m_out.id = id;
  }
  Rendering rendering() const override { return m_rendering; }

 private:
  ZrManageHuawei& m_facade;
  IdLookup m_idLookup = nullptr;
  RecordLookup m_recordLookup = nullptr;
  Record& m_out;
  Record m_taken;
  Rendering m_rendering;
};

// A record that holds only a name and a vStore: what a creation sends, before the rest is known.
template <typename Record>
Record namedRecord(const std::string& name, const std::string& vstoreId) {
  Record record;
  record.name = name;
  record.vstoreId = vstoreId;
  return record;
}

// The caller's record under the wanted name and vStore: what a group adopts, keeping the rest.
template <typename Record>
Record renamedAs(Record record, const Record& wanted) {
  record.name = wanted.name;
  record.vstoreId = wanted.vstoreId;
  return record;
}
