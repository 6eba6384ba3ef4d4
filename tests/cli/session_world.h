// A folder of files in memory, searched and saved as a session.
#pragma once

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/console_world.h"

namespace tresmor::tests {

constexpr std::int64_t kDay = 1'088'640'000;  // 2004-07-01 00:00:00 UTC

// Three of one content, each a day newer than the one before; two of one name; an empty file. The last file of all has
// a name that is last, so that it joins no group.
class SessionTest : public tests::ConsoleTest {
 protected:
  SessionTest() {
    files.MakeFolder("/home");
    Make("/data/a/one.txt", "same content", 0);
    Make("/data/a/sub/two.jpg", "same content", 1);
    Make("/data/b/three.txt", "same content", 2);
    Make("/data/b/one.txt", "else", 3);
    Make("/data/empty", "", 0);
    Make("/data/z", std::string(2000, 'z'), 0);
  }
  void Make(const std::string& path, const std::string& content, int day) {
    files.MakeFile(path, content);
    files.SetModified(path, kDay + day * 86'400);
  }
  std::string Content(const std::string& path) {
    Errors failure = Errors::None;
    const auto reader = files.Open(path, failure);
    if (!reader) return "none";
    std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
    reader->ReadAt(0, bytes);
    return bytes;
  }
  void Save() { ASSERT_EQ(Find({"/data", "--save", "s.Tresmor", "--quiet"}).status, kRanThrough); }
  // The marked paths of a list, in its order.
  std::vector<std::string> Marked(const char* list = "duplicates") {
    std::vector<std::string> paths;
    const auto document = nlohmann::json::parse(Run({"show", "s.Tresmor", "--format", "json"}).out);
    for (const auto& row : document["lists"][list]) {
      if (row.contains("marked")) paths.push_back(row["path"]);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
  }
  std::vector<std::string> Mark(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"mark", "s.Tresmor"});
    const ConsoleRun run = Run(arguments);
    EXPECT_EQ(run.status, kRanThrough) << run.err;
    return Marked();
  }
  using Paths = std::vector<std::string>;

  static constexpr char kFile[] = "/home/s.Tresmor";
  static constexpr char kOldest[] = "/data/a/one.txt";
  static constexpr char kMiddle[] = "/data/a/sub/two.jpg";
  static constexpr char kNewest[] = "/data/b/three.txt";
};

}  // namespace tresmor::tests
