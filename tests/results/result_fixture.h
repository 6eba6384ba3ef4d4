// The five lists with short ways to fill and read them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "results/result_lists.h"
#include "results/rows.h"

namespace tresmor::tests {

class ResultFixture : public testing::Test {
 protected:
  void Add(ResultList kind, const std::string& name, std::int32_t dupGrp = -1, std::int64_t size = 0) {
    Finding finding;
    finding.list = kind;
    finding.name = name;
    finding.folder = "/data/";
    finding.dupGrp = dupGrp;
    finding.size = size;
    AddResultItem(results.List(kind), finding);
  }
  void AddVersion(ResultList kind, const std::string& name, const std::string& version) {
    Finding finding;
    finding.name = name;
    finding.version = version;
    AddResultItem(results.List(kind), finding);
  }

  static std::vector<std::string> Texts(const ListView& lst, std::int32_t subItem = kNameItem) {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) texts.push_back(lst.Cell(row, subItem));
    return texts;
  }
  static std::vector<std::uint32_t> Colors(const ListView& lst) {
    std::vector<std::uint32_t> colors;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) colors.push_back(lst.ForeColor(row));
    return colors;
  }
  static std::vector<std::string> Headers(const ListView& lst) {
    std::vector<std::string> headers;
    for (std::int32_t column = 1; column <= lst.Columns(); ++column) headers.push_back(lst.Column(column).text);
    return headers;
  }
  std::vector<std::string> Captions() const {
    std::vector<std::string> captions;
    for (std::int32_t tab = 1; tab <= results.tabMain.Count(); ++tab) captions.push_back(results.tabMain.Caption(tab));
    return captions;
  }

  Panel panel;
  ResultLists results{panel};
  ListView& zero = results.List(ResultList::ZeroSize);
  ListView& duplicates = results.List(ResultList::Duplicates);
  ListView& sameName = results.List(ResultList::SameName);
  ListView& portions = results.List(ResultList::Portions);
  ListView& errors = results.List(ResultList::ReadErrors);
};

}  // namespace tresmor::tests
