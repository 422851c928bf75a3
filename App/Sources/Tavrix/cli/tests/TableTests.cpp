#include "cli/printing/Table.h"

#include <gmock/gmock.h>

#include "cli/printing/ProgressBar.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using namespace std::chrono_literals;

std::string tableText(const std::vector<Table::Cells>& rows, std::optional<int> columns) {
  StringSink sink;
  const Table table{{{"Имя", false, true}, {"N", true}, {"Note"}}, columns};
  table.write(sink, rows.size(), [&](std::size_t row) { return rows[row]; });
  return sink.text();
}

TEST(Table, cellsOfAnyScript_areAligned) {
  EXPECT_EQ(tableText({{"日本", "1", "x"}, {"Дача", "12345", ""}, {"é", "7", "y"}}, std::nullopt),
            "Имя       N  Note\n"
            "日本      1  x\n"
            "Дача  12345\n"
            "é         7  y\n");
}

TEST(Table, narrowTerminal_shortensTheLongColumnAlone) {
  const std::vector<Table::Cells> rows{{"IMG_0001_a_very_long_name.HEIC", "123", "note"}};
  EXPECT_EQ(tableText(rows, 24), "Имя              N  Note\nIMG_00…e.HEIC  123  note\n");
  // A column is never narrower than readable, and never shortened if it fits.
  EXPECT_EQ(tableText(rows, 5), "Имя         N  Note\nIMG_…EIC  123  note\n");
  EXPECT_EQ(tableText(rows, 41), tableText(rows, std::nullopt));
}

TEST(Table, narrowTerminal_breaksAColumnOfSentencesBetweenItsWords) {
  StringSink sink;
  const Table table{
      {{"Key"}, {.title = "Meaning", .wraps = true}, {.title = "Path", .mayShrink = true}}, 32};
  table.write(sink, 1, [&](std::size_t) -> Table::Cells {
    return {"a", "all snapshots arrived safely", "/home/anna/pictures"};
  });
  EXPECT_EQ(sink.text(),
            "Key  Meaning       Path\n"
            "a    all           /home/…ctures\n"
            "     snapshots\n"
            "     arrived\n"
            "     safely\n");
}

TEST(Table, controlCharacters_neverReachTheTerminal) {
  EXPECT_THAT(tableText({{"a\x1b[31m\nb", "1", ""}}, std::nullopt),
              HasSubstr("a\uFFFD[31m\uFFFDb"));
}

TEST(Table, shortenedText_keepsWholeCharactersAndFits) {
  EXPECT_EQ(shortened("IMG_0001.HEIC", 13), "IMG_0001.HEIC");
  EXPECT_EQ(shortened("IMG_0001.HEIC", 9), "IMG_…HEIC");
  EXPECT_EQ(shortened("IMG_0001.HEIC", 1), "…");
  EXPECT_EQ(shortened("IMG_0001.HEIC", 0), "");
  for (int columns = 0; columns < 12; ++columns) {
    const std::string text = shortened("日本日本👨‍👩‍👧日本", columns);
    EXPECT_LE(displayWidth(text), columns);
    EXPECT_EQ(replacingInvalidUtf8(text), text);
  }
}

TransferProgressSnapshot progressOf(std::uint64_t files, std::uint64_t bytes) {
  TransferProgressSnapshot progress;
  progress.filesDone = files;
  progress.filesTotal = 200;
  progress.bytesDone = bytes;
  progress.bytesTotal = 100'000'000;
  progress.currentFileName = "IMG_0001.HEIC";
  return progress;
}

std::string barText(int columns, Language language, const TransferProgressSnapshot& progress) {
  StringSink terminal;
  const Messages messages{terminal, {.columns = columns, .language = language}};
  return ProgressBar{messages}.text(progress);
}

TEST(ProgressBar, text_tellsFilesBytesSpeedTimeAndName) {
  StringSink terminal;
  const Messages messages{terminal, {.columns = 120, .language = Language::english}};
  std::optional<ProgressBar> bar{std::in_place, messages};
  const std::chrono::steady_clock::time_point begin{};
  bar->show(progressOf(0, 0), begin);
  EXPECT_THAT(terminal.text(),
              HasSubstr("░░░░ 0 / 200 files · 0\u00A0B / 100.0\u00A0MB · IMG_0001.HEIC"));
  bar->show(progressOf(50, 25'000'000), begin + 1s);
  EXPECT_THAT(terminal.text(),
              HasSubstr("█████░░░░░░░░░░░░░░░ 50 / 200 files · 25.0\u00A0MB / 100.0\u00A0MB · "
                        "25.0\u00A0MB/s · 0:03 left · IMG_0001.HEIC"));
  bar.reset();
  EXPECT_THAT(terminal.text(), EndsWith("\r\x1b[K"));
}

TEST(ProgressBar, noun_goesWithTheTotal) {
  struct Row {
    std::uint64_t total;
    std::string russian;
    std::string english;
  };
  for (const Row& row :
       {Row{1, "0 / 1 файлов ·", "0 / 1 file ·"}, Row{2, "0 / 2 файлов ·", "0 / 2 files ·"},
        Row{5, "0 / 5 файлов ·", "0 / 5 files ·"}}) {
    TransferProgressSnapshot progress = progressOf(0, 0);
    progress.filesTotal = row.total;
    EXPECT_THAT(barText(120, Language::russian, progress), HasSubstr(row.russian));
    EXPECT_THAT(barText(120, Language::english, progress), HasSubstr(row.english));
  }
}

TEST(ProgressBar, packing_tellsArchivesAndTheOneInHand) {
  TransferProgressSnapshot progress;
  progress.stage = TransferStage::packing;
  progress.packedGroups = 2;
  progress.packGroupsTotal = 5;
  progress.stageFraction = 0.5;
  progress.currentFileName = "2026-05-20.zip";
  EXPECT_EQ(barText(120, Language::russian, progress),
            "██████████░░░░░░░░░░ 4 · Архивация · 2 / 5 групп · 2026-05-20.zip");
  progress.packGroupsTotal = 1;
  EXPECT_THAT(barText(120, Language::english, progress),
              testing::HasSubstr("4 · Packing · 2 / 1 group · "));
}

TEST(ProgressBar, manySteps_areDrawnTenTimesASecond) {
  StringSink terminal;
  const Messages messages{terminal, {.columns = 60}};
  ProgressBar bar{messages};
  for (int i = 0; i < 1000; ++i) {
    bar.show(progressOf(1, static_cast<std::uint64_t>(i)),
             std::chrono::steady_clock::time_point{i * 1ms});
  }
  const std::string text = terminal.text();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 10);
}

TEST(ProgressBar, narrowTerminal_losesWholeParts) {
  StringSink terminal;
  for (int columns = 1; columns <= 130; ++columns) {
    const Messages messages{terminal, {.columns = columns}};
    ProgressBar bar{messages};
    bar.show(progressOf(0, 0), {});
    bar.show(progressOf(50, 25'000'000), std::chrono::steady_clock::time_point{1s});
    const std::string text = bar.text(progressOf(50, 25'000'000));
    EXPECT_LE(displayWidth(text), columns);
    const bool hasName = text.ends_with(" · IMG_0001.HEIC");
    EXPECT_EQ(hasName, columns >= 42) << columns << ": " << text;
    EXPECT_EQ((text.find("осталось 0:03 · IMG") != std::string::npos), columns >= 58)
        << columns << ": " << text;
    EXPECT_EQ((text.find(" · 25,0\u00A0МБ/с · осталось") != std::string::npos), columns >= 70)
        << columns << ": " << text;
  }
}

TEST(ProgressBar, programs_getOneObjectALine) {
  StringSink sink;
  const Messages messages{sink, {.progress = ProgressForm::json, .columns = 80}};
  ProgressBar bar{messages};
  bar.show(progressOf(50, 25'000'000), {});
  messages.warn("half");
  messages.logLine("line");
  EXPECT_EQ(sink.text(),
            R"({"type":"progress","stage":"copying","filesDone":50,"filesTotal":200,)"
            R"("bytesDone":25000000,"bytesTotal":100000000,"currentFile":"IMG_0001.HEIC"}
{"type":"message","level":"warning","text":"half"}
{"type":"log","text":"line"}
)");
}

}  // namespace
}  // namespace tavrix::cli
