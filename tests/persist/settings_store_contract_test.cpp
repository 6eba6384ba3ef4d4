// What any store of settings promises: the tests' own, and the file, in memory and on disk.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "persist/ini_settings.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "support/memory_settings.h"

namespace tresmor {
namespace {

class StoreWorld {
 public:
  virtual ~StoreWorld() = default;
  virtual SettingsStore& Store() = 0;
};

class MemoryWorld final : public StoreWorld {
 public:
  SettingsStore& Store() override { return store_; }

 private:
  MemorySettings store_;
};

class FileInMemory final : public StoreWorld {
 public:
  SettingsStore& Store() override { return store_; }

 private:
  MemoryFileSystem files_;
  MemoryFileWriter writer_{files_};
  IniSettings store_{files_, writer_, "/home/me/.config/tresmor/tresmor.ini"};
};

class FileOnDisk final : public StoreWorld {
 public:
  FileOnDisk() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_settings_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    root_ = pattern;
    store_ = std::make_unique<IniSettings>(files_, writer_, root_ + "/config/tresmor/tresmor.ini");
  }
  ~FileOnDisk() override { std::filesystem::remove_all(root_); }
  SettingsStore& Store() override { return *store_; }

 private:
  PosixFileSystem files_;
  PosixFileWriter writer_;
  std::string root_;
  std::unique_ptr<IniSettings> store_;
};

struct Kind {
  const char* name;
  std::function<std::unique_ptr<StoreWorld>()> make;
};

class SettingsStoreContract : public testing::TestWithParam<Kind> {
 protected:
  std::string Get(const std::string& key, const std::string& section = "Options") const {
    return store_.Get("Tresmor", section, key, "none");
  }
  void Save(const std::string& key, const std::string& value, const std::string& section = "Options") {
    store_.Save("Tresmor", section, key, value);
  }

  std::unique_ptr<StoreWorld> world_ = GetParam().make();
  SettingsStore& store_ = world_->Store();
};

TEST_P(SettingsStoreContract, AnEmptyStoreGivesTheFallback) {
  EXPECT_EQ(Get("NoTooltips"), "none");
  EXPECT_EQ(store_.Get("Tresmor", "Options", "NoTooltips", ""), "");
}

TEST_P(SettingsStoreContract, GivesWhatWasSavedLast) {
  Save("NoTooltips", "1");
  EXPECT_EQ(Get("NoTooltips"), "1");
  Save("NoTooltips", "");
  EXPECT_EQ(Get("NoTooltips"), "");
  EXPECT_EQ(Get("NoTooltip"), "none");
}

TEST_P(SettingsStoreContract, KeysDependOnSectionAndApplication) {
  Save("0", "path", "PathHistory");
  Save("0", "ext", "ExtHistory");
  store_.Save("Other", "ExtHistory", "0", "other");
  EXPECT_EQ(Get("0", "PathHistory"), "path");
  EXPECT_EQ(Get("0", "ExtHistory"), "ext");
  EXPECT_EQ(store_.Get("Other", "ExtHistory", "0", ""), "other");
  EXPECT_EQ(store_.Get("Other", "PathHistory", "0", "none"), "none");
}

TEST_P(SettingsStoreContract, NamesAreComparedWithoutCase) {
  Save("Show Tips at Startup", "1");
  store_.Save("TRESMOR", "OPTIONS", "SHOW TIPS AT STARTUP", "0");
  EXPECT_EQ(Get("show tips at startup", "options"), "0");
  Save("größe", "1");
  EXPECT_EQ(Get("GRÖßE"), "1");
}

TEST_P(SettingsStoreContract, NamesAndValuesAreAnyBytes) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::string odd[] = {all,
                             "",
                             " ",
                             "  two  ",
                             "\n",
                             "a\nb=c\r\n[x]",
                             "\\",
                             "\\x41",
                             "\\\\x41",
                             "C:\\x",
                             "a=b",
                             "=",
                             "[a]",
                             "]",
                             "a/b",
                             "; no",
                             "# no",
                             "\xef\xbb\xbf",
                             "\xff",
                             "ß",
                             "\t",
                             "\"q\"",
                             "\\n",
                             std::string(1, '\0'),
                             std::string(100'000, '\\')};
  for (const std::string& text : odd) {
    Save("key", text);
    EXPECT_TRUE(Get("key") == text) << text.substr(0, 10);
    Save(text, "value of it");
    EXPECT_EQ(Get(text), "value of it") << text.substr(0, 10);
    store_.Save(text, text, "key", "in an odd place");
    EXPECT_EQ(store_.Get(text, text, "key", ""), "in an odd place") << text.substr(0, 10);
  }
  for (const std::string& text : odd) EXPECT_EQ(Get(text), "value of it") << text.substr(0, 10);
}

TEST_P(SettingsStoreContract, DeletingASectionLeavesTheOthers) {
  Save("0", "a", "PathHistory");
  Save("1", "b", "PathHistory");
  Save("0", "c", "ExtHistory");
  store_.Save("Other", "PathHistory", "0", "d");
  store_.DeleteSection("tresmor", "pathhistory");
  EXPECT_EQ(Get("0", "PathHistory"), "none");
  EXPECT_EQ(Get("1", "PathHistory"), "none");
  EXPECT_EQ(Get("0", "ExtHistory"), "c");
  EXPECT_EQ(store_.Get("Other", "PathHistory", "0", ""), "d");
  Save("0", "new", "PathHistory");
  EXPECT_EQ(Get("0", "PathHistory"), "new");
}

TEST_P(SettingsStoreContract, DeletingWhatIsNotThereIsNoFailure) {
  EXPECT_NO_THROW(store_.DeleteSection("Tresmor", "PathHistory"));
  Save("NoTooltips", "1");
  EXPECT_NO_THROW(store_.DeleteSection("Tresmor", "PathHistory"));
  EXPECT_EQ(Get("NoTooltips"), "1");
}

INSTANTIATE_TEST_SUITE_P(All, SettingsStoreContract,
                         testing::Values(Kind{"Memory", [] { return std::make_unique<MemoryWorld>(); }},
                                         Kind{"FileInMemory", [] { return std::make_unique<FileInMemory>(); }},
                                         Kind{"FileOnDisk", [] { return std::make_unique<FileOnDisk>(); }}),
                         [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

}  // namespace
}  // namespace tresmor
