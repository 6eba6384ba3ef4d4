// Four texts that end in NUL: an application, a section of it, a key and a value; then any bytes as a settings file.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "desk/guarded_msg.h"
#include "persist/ini_settings.h"
#include "persist/program_run.h"
#include "persist/whole_file.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"

namespace tresmor {
namespace {

constexpr char kPath[] = "/tresmor.ini";
constexpr char kNone[] = "<none>";

struct Input {
  std::string application, section, key, value, file;
};

Input Cut(std::string_view bytes) {
  Input input;
  for (std::string* field : {&input.application, &input.section, &input.key, &input.value}) {
    *field = bytes.substr(0, bytes.find('\0'));
    bytes.remove_prefix(std::min(field->size() + 1, bytes.size()));
  }
  input.file = bytes;
  return input;
}

struct SettingsFile {
  explicit SettingsFile(std::string text) { files.MakeFile(kPath, std::move(text)); }
  std::string Text() const { return ReadWholeFile(files, kPath); }

  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  IniSettings store{files, writer, kPath};
};

using Lines = std::vector<std::string>;

Lines LinesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    lines.emplace_back(text.substr(0, text.find('\n')));
    text.remove_prefix(std::min(lines.back().size() + 1, text.size()));
  }
  return lines;
}

// The first names of entries in a file, as they stand there.
Lines NamesIn(std::string_view text) {
  constexpr std::size_t kMost = 8;
  Lines names;
  for (const std::string& line : LinesOf(text)) {
    const std::size_t mark = line.find('=');
    if (mark != line.npos && names.size() < kMost) names.push_back(line.substr(0, mark));
  }
  return names;
}

// What a section has for these keys.
Lines Values(const SettingsStore& store, const std::string& application, const std::string& section,
             const Lines& keys) {
  Lines values;
  for (const std::string& key : keys) values.push_back(store.Get(application, section, key, kNone));
  return values;
}

// Changing a value changes its line, or adds some; no other is touched.
void CheckLinesAfterSave(const Lines& before, const Lines& after) {
  const auto head = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto tail = std::mismatch(before.rbegin(), std::reverse_iterator(head.first), after.rbegin(),
                                  std::reverse_iterator(head.second));
  EXPECT_LE(tail.first.base() - head.first, 1);
}

// Entries alone go.
void CheckLinesAfterDelete(const Lines& before, const Lines& after) {
  auto kept = after.begin();
  for (const std::string& line : before) {
    if (kept != after.end() && *kept == line) {
      ++kept;
    } else {
      EXPECT_NE(line.find('='), line.npos) << line;
    }
  }
  EXPECT_TRUE(kept == after.end());
}

void CheckSaveAndDelete(const Input& input) {
  SettingsFile file(input.file);
  Lines keys = NamesIn(input.file);
  std::erase_if(keys, [&](const std::string& name) { return EqualText(name, input.key); });
  const bool isOptions = EqualText(input.application, kAppTitle) && EqualText(input.section, kOptionsSection);
  const std::string other = isOptions ? kPathHistory : kOptionsSection;
  const Lines values = Values(file.store, input.application, input.section, keys);
  const Lines others = Values(file.store, kAppTitle, other, keys);

  file.store.Save(input.application, input.section, input.key, input.value);
  const std::string saved = file.Text();
  EXPECT_EQ(file.store.Get(input.application, input.section, input.key, kNone), input.value);
  EXPECT_EQ(Values(file.store, input.application, input.section, keys), values);
  EXPECT_EQ(Values(file.store, kAppTitle, other, keys), others);
  CheckLinesAfterSave(LinesOf(input.file), LinesOf(saved));
  file.store.Save(input.application, input.section, input.key, input.value);
  EXPECT_EQ(file.Text(), saved);

  file.store.DeleteSection(input.application, input.section);
  keys.push_back(input.key);
  EXPECT_EQ(Values(file.store, input.application, input.section, keys), Lines(keys.size(), kNone));
  keys.pop_back();
  EXPECT_EQ(Values(file.store, kAppTitle, other, keys), others);
  CheckLinesAfterDelete(LinesOf(saved), LinesOf(file.Text()));
}

// What a start brings back. Folders apart: as many are kept as there are patterns, presets among them.
Lines BroughtBack(const tests::ProgramRun& run) {
  const Options& options = run.options;
  Lines texts = {FormatNamedDay(options.LastUpdateChk), std::to_string(options.NoTooltipsOpt),
                 std::to_string(options.ShowTipsOpt), options.DefaultEditorOpt};
  for (const GuardedMessage& message : kGuardedMessages) texts.push_back(std::to_string(options.*message.Flag));
  for (std::int32_t i = 0; run.txtExt.List(i) != kSeparator; ++i) texts.push_back(run.txtExt.List(i));
  return texts;
}

// A program that starts with any file keeps what it made of it in a new one.
void CheckRunToRun(const std::string& ini) {
  SettingsFile given(ini);
  tests::ProgramRun first(given.store);
  SettingsFile kept("");
  SaveSettings(kept.store, first.Owner());
  const tests::ProgramRun second(kept.store);
  EXPECT_EQ(BroughtBack(second), BroughtBack(first)) << kept.Text();
}

}  // namespace
}  // namespace tresmor

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  using namespace tresmor;
  const Input input = Cut({reinterpret_cast<const char*>(bytes), count});
  CheckSaveAndDelete(input);
  CheckRunToRun(input.file);
  return 0;
}
