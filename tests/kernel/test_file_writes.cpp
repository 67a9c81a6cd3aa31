// Every kind of file the program writes, made to fail part-way with the
// real program: under a size limit on files (which works for any user),
// through links to /dev/full, and on a full tmpfs where a private mount
// is allowed. Each failure prints one message with the file's name, the
// old file stays as it was, and no temporary file is left behind.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/program.h"

namespace {

// The files to write and the lines that write them; each new content is
// larger than the limit below.
struct Writer {
  const char* file;
  const char* lines;
};

const Writer WRITERS[] = {
    {"f.func", "write func(\"big\") name(\"f.func\")\n"},
    {"v.obj", "write vol(1) name(\"v.obj\")\n"},
    {"i.bmp", "write image(1) name(\"i.bmp\")\n"},
    {"i.tga", "write image(1) name(\"i.tga\")\n"},
    {"i.png", "write image(1) name(\"i.png\")\n"},
    {"i.jpg", "write image(1) name(\"i.jpg\")\n"},
    {"i.raw", "write image(1) name(\"i.raw\")\n"},
    {"i.flo", "write image(1) name(\"i.flo\")\n"},
    {"i.ima", "write image(1) name(\"i.ima\")\n"},
    {"t.txt", "g=fopen(\"t.txt\") fwrite\nfor(i=0;i<100;i++){fwrite(g,\"0123456789012345678901234567890123456789\")}\nfclose(g)\n"},
    {"a.txt", "h=fopen(\"a.txt\") add\nfor(i=0;i<100;i++){fwrite(h,\"0123456789012345678901234567890123456789\")}\nfclose(h)\n"},
};

constexpr long LIMIT = 1024;

// A function whose text is `n` times longer than "a=a+1; ".
std::string long_function(int n) {
  std::string body;
  for (int i = 0; i < n; i++) body += "a=a+1; ";
  return "func=\"big(){ a=0; " + body + "return(a); }\"\n";
}

// What makes the contents: a function of more than LIMIT bytes, a volume
// and an image whose files are larger.
std::string making() { return long_function(200) + "ball(1) secx(20) secy(20)\nimage(1) dim(64,64) rand(0.5)\n"; }

std::string old_content(const std::string& file) { return "old " + file + "\n"; }

}  // namespace

TEST(FileWrites, AFailedWriteLeavesTheOldFileAndSaysSoOnce) {
  Program s;
  s.file_limit = LIMIT;
  for (const Writer& w : WRITERS) s.put(w.file, old_content(w.file));
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type(making());
  for (const Writer& w : WRITERS) s.type(w.lines);
  // The function was not saved: the end of the pipe is `bye abs`, so ask.
  s.type("bye\n0\n");
  s.type("$\"done\"\n");
  s.end_input();
  s.finish();
  ASSERT_NE(s.seen.find("done"), std::string::npos) << s.seen;
  for (const Writer& w : WRITERS) {
    EXPECT_EQ(s.file(w.file), old_content(w.file)) << w.file;
    EXPECT_EQ(occurrences(s.seen, std::string(w.file) + ":  DISK FULL\n"), 1) << w.file << "\n" << s.seen;
  }
  EXPECT_EQ(occurrences(s.seen, "DISK FULL"), static_cast<int>(std::size(WRITERS))) << s.seen;
  EXPECT_NE(s.seen.find("FUNCTIONS HAVE NOT BEEN SAVED"), std::string::npos) << s.seen;
  EXPECT_EQ(s.leftovers(), 0);
}

TEST(FileWrites, ABandOfARawFileIsWrittenWholeOrNotAtAll) {
  Program first;
  first.run_lines("image(1) dim(64,64) rand(0.5)\nwrite image(1) name(\"band.raw\")\n");
  const std::string before = first.file("band.raw");
  ASSERT_GT(before.size(), static_cast<size_t>(LIMIT));

  const std::string band = "image(2) dim(64,64)\nwrite image(2) name(\"band.raw\") line(0,10)\n";
  Program second;
  second.take_folder(first);
  second.file_limit = LIMIT;
  second.run_lines(band);
  EXPECT_EQ(occurrences(second.seen, "band.raw:  DISK FULL\n"), 1) << second.seen;
  EXPECT_EQ(second.file("band.raw"), before);
  EXPECT_EQ(second.leftovers(), 0);

  // Without the limit the band goes in, and only the band.
  Program third;
  third.take_folder(second);
  third.run_lines(band);
  const std::string after = third.file("band.raw");
  ASSERT_EQ(after.size(), before.size());
  const size_t header = before.size() - 64 * 64 * 4;
  const size_t rows = 10 * 64 * 4;
  EXPECT_EQ(after.substr(header, rows), std::string(rows, '\0'));
  EXPECT_EQ(after.substr(header + rows), before.substr(header + rows));
}

TEST(FileWrites, ALinkToAFullDeviceSaysDiskFull) {
  Program s;
  for (const char* name : {"f.func", "v.obj", "t.txt"})
    std::filesystem::create_symlink("/dev/full", s.dir / name);
  ASSERT_TRUE(s.start(Program::Input::pipe));
  s.type(making());
  s.type(WRITERS[0].lines);
  s.type(WRITERS[1].lines);
  s.type(WRITERS[9].lines);
  s.end_input();
  s.finish();
  for (const char* name : {"f.func", "v.obj", "t.txt"}) {
    EXPECT_EQ(occurrences(s.seen, std::string(name) + ":  DISK FULL\n"), 1) << name << "\n" << s.seen;
    EXPECT_TRUE(std::filesystem::is_symlink(s.dir / name)) << name;
  }
}

TEST(FileWrites, AFullFilesystemKeepsTheOldFiles) {
  if (std::system("unshare -rm true >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "no private mounts here (unshare -rm): the full-filesystem case is not run";
  Program s;
  // Inside a private mount namespace: a small tmpfs on the working
  // folder, old files in it, then the program, which writes and reads
  // the files back itself (the mount ends with it).
  std::string script = "cd / && mount -t tmpfs -o size=64k none \"$D\" && cd \"$D\" && printf 'old\\n' > f.func"
                       " && printf 'old\\n' > v.obj && head -c 40000 /dev/zero > filler && exec \"$B\" gra=0 ID";
  setenv("D", s.dir.c_str(), 1);
  setenv("B", ORVELA_BINARY, 1);
  ASSERT_TRUE(s.start_command({"unshare", "-rm", "sh", "-c", script}, Program::Input::pipe));
  s.type(long_function(5000));
  s.type("ball(1) secx(60) secy(60)\n");
  s.type(WRITERS[0].lines);
  s.type(WRITERS[1].lines);
  s.type("fread(\"f.func\")\nfread(\"v.obj\")\n");
  s.end_input();
  s.finish();
  unsetenv("D");
  unsetenv("B");
  EXPECT_EQ(occurrences(s.seen, "f.func:  DISK FULL\n"), 1) << s.seen;
  EXPECT_EQ(occurrences(s.seen, "v.obj:  DISK FULL\n"), 1) << s.seen;
  // fread shows each old file as it was.
  EXPECT_EQ(occurrences(s.seen, "old\n"), 2) << s.seen;
}
