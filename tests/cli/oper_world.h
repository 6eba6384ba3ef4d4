// Files in memory whose duplicates are marked, to be trashed, deleted, moved and copied.
#pragma once

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/console_world.h"

namespace tresmor::tests {

// Two groups: three files of one content, and two of another.
class OperTest : public tests::ConsoleTest {
 protected:
  OperTest() {
    for (const char* folder : {"/home/me/Trash/files", "/home/me/Trash/info", "/dest"}) files.MakeFolder(folder);
    files.MakeFile("/data/a/one", "same content");
    files.MakeFile("/data/b/two", "same content");
    files.MakeFile("/data/c/three", "same content");
    files.MakeFile("/data/c/x", "pair");
    files.MakeFile("/data/d/x", "pair");
  }
  // Searches, and marks the files of these names.
  void SaveAndMark(const std::string& pattern, const std::string& list = "duplicates") {
    ASSERT_EQ(Find({"/data", "--save", "s.Tresmor", "--quiet"}).status, kRanThrough);
    ASSERT_EQ(Run({"mark", "s.Tresmor", "--list", list, "--pattern", pattern, "--keep", "none"}).status, kRanThrough);
  }
  ConsoleRun Do(const std::string& command, std::vector<std::string> options = {"--yes"}) {
    options.insert(options.begin(), {command, "s.Tresmor"});
    return Run(options);
  }
  // What the session has in its list, with a star behind marked ones.
  Paths Rows(const char* list = "duplicates") {
    Paths rows;
    const auto document = nlohmann::json::parse(Run({"show", "s.Tresmor", "--format", "json"}).out);
    for (const auto& row : document["lists"][list]) {
      rows.push_back(row["path"].get<std::string>() + (row.contains("marked") ? "*" : ""));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
  }
  std::map<std::string, std::string> Data() const { return AllFiles(files, "/data"); }
  bool Exists(const std::string& path) const {
    FileStat stat;
    return files.Stat(path, stat) == Errors::None;
  }
};

}  // namespace tresmor::tests
