// `write image` and `read image` at the console: names, numbers, the
// search path, every format through the commands, bands of raw files.
#include "image/image_io.h"
#include "image_fixture.h"

namespace {

using ImageCommands = ImageTest;

TEST_F(ImageCommands, EveryFormatRoundTripsThroughTheCommands) {
  Objet* a = motif(1, 4, 3);
  ASSERT_NE(a, nullptr);
  const Bytes want = bytes_of(a);
  int id = 10;
  for (const char* name : {"a.flo", "a.ima", "a.raw", "a.tga", "a.png", "A.PNG", "a.TGA"}) {
    ok("write image(1) name(\"" + at(name) + "\")");
    ok("read image(" + std::to_string(id) + ") name(\"" + at(name) + "\")");
    Objet* b = image_numero(id++);
    ASSERT_NE(b, nullptr) << name;
    EXPECT_EQ(image_nx(b), 4) << name;
    EXPECT_EQ(bytes_of(b), want) << name;
  }
  // The bitmap keeps the colours and takes alpha from `transp`.
  ok("write image(1) name(\"" + at("a.bmp") + "\")");
  ok("read image(20) name(\"" + at("a.bmp") + "\") transp(0.5)");
  const Bytes got = bytes_of(image_numero(20));
  for (size_t i = 0; i < want.size(); i++) EXPECT_EQ(got[i], i % 4 == 3 ? 128 : want[i]) << i;
  // JPEG within a tolerance.
  ok("write image(1) name(\"" + at("a.jpg") + "\")");
  ok("read image(21) name(\"" + at("a.jpg") + "\")");
  EXPECT_EQ(image_ny(image_numero(21)), 3);
}

TEST_F(ImageCommands, AJpegLeavesItsStagesInTheExecutablesFolder) {
  ASSERT_NE(motif(1, 4, 4), nullptr);
  const std::string exe = kernel().exe;
  kernel().exe = dir.string() + "/";
  ok("write image(1) name(\"" + at("b.jpg") + "\")");
  kernel().exe = exe;
  // tmp.jpg is the file written; tmp.bmp the picture it came from.
  EXPECT_EQ(file(at("tmp.jpg")), file(at("b.jpg")));
  ok("read image(2) name(\"" + at("tmp.bmp") + "\")");
  Objet* staged = image_numero(2);
  ASSERT_NE(staged, nullptr);
  const Bytes a = bytes_of(image_numero(1)), b = bytes_of(staged);
  ASSERT_EQ(a.size(), b.size());
  for (size_t i = 0; i < a.size(); i++)
    if (i % 4 != 3) {
      EXPECT_EQ(a[i], b[i]) << i;
    }
}

TEST_F(ImageCommands, ATargaOfAnotherKindClearsTheImageAndAShortOneKeepsIt) {
  Objet* o = motif(5, 2, 2);
  ASSERT_NE(o, nullptr);
  const Bytes before = bytes_of(o);
  // 18 header bytes: type 1, 24 bits, 2 x 2.
  Bytes head(18, 0);
  head[2] = 1;
  head[12] = head[14] = 2;
  head[16] = 24;
  put(at("kind.tga"), head);
  EXPECT_NE(fails("read image(5) name(\"" + at("kind.tga") + "\")").find("Can only handle image type 2 and 10"),
            std::string::npos);
  EXPECT_EQ(bytes_of(image_numero(5)), Bytes(16, 0));
  // A right header with its pixels cut short: the image stays as it was.
  ASSERT_NE(motif(5, 2, 2), nullptr);
  head[2] = 2;
  head.insert(head.end(), {1, 2, 3});
  put(at("short.tga"), head);
  EXPECT_NE(fails("read image(5) name(\"" + at("short.tga") + "\")").find("Unexpected end of file at pixel 1"),
            std::string::npos);
  EXPECT_EQ(bytes_of(image_numero(5)), before);
}

TEST_F(ImageCommands, NumbersGoBetweenBaseAndExtension) {
  ASSERT_NE(motif(1, 2, 2), nullptr);
  ok("write image(1) name(\"" + at("a.bmp") + "\") number(\"4D\",7)");
  EXPECT_TRUE(std::filesystem::exists(dir / "a0007.bmp"));
  ok("write image(1) name(\"" + at("b.tga") + "\") number(12)");
  EXPECT_TRUE(std::filesystem::exists(dir / "b12.tga"));
  ok("write image(1) name(\"" + at("c.raw") + "\") number(\"_x.\")");
  EXPECT_TRUE(std::filesystem::exists(dir / "c_x.raw"));
  ok("write image(1) name(\"" + at("d.raw") + "\") number(\"3X\",-26)");
  EXPECT_TRUE(std::filesystem::exists(dir / "d-1a.raw"));
  EXPECT_NE(fails("write image(1) name(\"" + at("e.raw") + "\") number(\"D\",1)").find("number"), std::string::npos);
  // Reading with a band takes the band's line as an offset.
  ok("read image(2) name(\"" + at("a.bmp") + "\") number(\"4D\",5) line(2,1)");
  EXPECT_EQ(image_nx(image_numero(2)), 2);
}

TEST_F(ImageCommands, NamesThatAreRefused) {
  ASSERT_NE(motif(1, 2, 2), nullptr);
  EXPECT_EQ(fails("write image(1) name(\"" + at("noperiod") + "\")"), at("noperiod") + " ILLEGAL NAME\n");
  EXPECT_EQ(fails("write image(1) name(\"" + at("a.gif") + "\")"), "gif UNKNOWN\n");
  EXPECT_EQ(fails("read image(2) name(\"" + at("a.Png") + "\")"), "Png UNKNOWN\n");
  EXPECT_EQ(fails("read image(2) name(\"" + at("none.png") + "\")"), at("none.png") + ":  NOT FOUND\n");
  EXPECT_TRUE(nil("read image(2) name(\"!anything\")"));
  EXPECT_EQ(image_numero(2), nullptr);
  EXPECT_NE(fails("read image(2)").find("read image"), std::string::npos);
  // A short write: message 67.
  std::filesystem::create_symlink("/dev/full", dir / "full.bmp");
  EXPECT_EQ(fails("write image(1) name(\"" + at("full.bmp") + "\")"), at("full.bmp") + ":  DISK FULL\n");
  EXPECT_NE(fails("write image(1) name(\"" + at("x/y.bmp") + "\")").find("WRITE ERROR"), std::string::npos);
  EXPECT_NE(fails("write image(9) name(\"" + at("y.bmp") + "\")").find("NOT FOUND"), std::string::npos);
}

TEST_F(ImageCommands, ReadingFindsItsFileAndItsExtension) {
  ASSERT_NE(motif(1, 3, 1), nullptr);
  std::filesystem::create_directories(dir / "ima");
  ok("write image(1) name(\"" + at("ima/only.ima") + "\")");
  const std::string saved = kernel().ima;
  kernel().ima = at("ima");
  Outcome r = run("read image(2) name(\"only.ima\") debug");
  kernel().ima = saved;
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out, "nom=" + at("ima") + "/only.ima x=3 y=1\n");
  // No extension: ".ima"; a trailing "/" goes.
  ok("read image(3) name(\"" + at("ima/only") + "\")");
  ok("read image(4) name(\"" + at("ima/only.ima") + "/\")");
  EXPECT_EQ(bytes_of(image_numero(3)), bytes_of(image_numero(1)));
  EXPECT_EQ(bytes_of(image_numero(4)), bytes_of(image_numero(1)));
}

TEST_F(ImageCommands, CompressedFloIsAHeaderAndReadsBlack) {
  ASSERT_NE(motif(1, 5, 4), nullptr);
  ok("write image(1) name(\"" + at("c.flo") + "\") format(1)");
  EXPECT_EQ(file(at("c.flo")).size(), 16u);
  ok("read image(2) name(\"" + at("c.flo") + "\")");
  EXPECT_EQ(bytes_of(image_numero(2)), Bytes(80, 0));
  // A name of more than four characters gets ".flo" if it lacks it.
  ok("write image(1) name(\"" + at("d.FLO") + "\")");
  EXPECT_TRUE(std::filesystem::exists(dir / "d.FLO.flo"));
}

TEST_F(ImageCommands, AShortFileLeavesTheRestAsItWas) {
  Objet* a = motif(1, 2, 2);
  ASSERT_NE(a, nullptr);
  const Bytes first = bytes_of(a);
  ok("write image(1) name(\"" + at("s.raw") + "\")");
  Bytes f = file(at("s.raw"));
  f.resize(8 + 4);  // one pixel
  put(at("s.raw"), f);
  Objet* b = motif(2, 2, 2);
  const Bytes before = bytes_of(b);
  ok("read image(2) name(\"" + at("s.raw") + "\")");
  const Bytes after = bytes_of(b);
  EXPECT_EQ(Bytes(after.begin(), after.begin() + 4), Bytes(first.begin(), first.begin() + 4));
  EXPECT_EQ(Bytes(after.begin() + 4, after.end()), Bytes(before.begin() + 4, before.end()));
}

TEST_F(ImageCommands, CropResizeAndScale) {
  ASSERT_NE(motif(1, 4, 4), nullptr);
  ok("write image(1) name(\"" + at("w.raw") + "\") win(1,2,2,5)");
  ok("read image(2) name(\"" + at("w.raw") + "\")");
  Objet* b = image_numero(2);
  ASSERT_EQ(image_nx(b), 2);
  ASSERT_EQ(image_ny(b), 2);  // clipped at the top
  EXPECT_EQ(pixels_image(b)[0], pixels_image(image_numero(1))[(2 * 4 + 1) * 4]);
  ok("write image(1) name(\"" + at("d.raw") + "\") dim(8)");
  ok("read image(3) name(\"" + at("d.raw") + "\") dim(2,1) coe(0)");
  Objet* c = image_numero(3);
  EXPECT_EQ(image_nx(c), 2);
  EXPECT_EQ(image_ny(c), 1);
  EXPECT_EQ(pixels_image(c)[0], 0);
  EXPECT_EQ(pixels_image(c)[3], pixels_image(image_numero(1))[3]);
  EXPECT_NE(fails("write image(1) name(\"" + at("e.raw") + "\") win(9,9,2,2)").find("ILLEGAL"), std::string::npos);
}

TEST_F(ImageCommands, RawBandsWrapAndFillTheSecondImage) {
  Objet* a = motif(1, 3, 4);
  ASSERT_NE(a, nullptr);
  const Bytes whole = bytes_of(a);
  ok("write image(1) name(\"" + at("big.raw") + "\")");
  ok("read image(5,6) name(\"" + at("big.raw") + "\") line(0,3)");
  Objet* six = image_numero(6);
  ASSERT_NE(six, nullptr);
  EXPECT_EQ(Bytes(pixels_image(six), pixels_image(six) + 36), Bytes(whole.begin(), whole.begin() + 36));
  EXPECT_EQ(image_numero(5), nullptr);  // made once the pass is complete
  ok("read image(5,6) line");                   // lines 3.. then wrap
  EXPECT_EQ(bytes_of(image_numero(5)), whole);
  // Writing a band: lines 1 and 2 of image 7 over a file of image 1.
  ASSERT_NE(motif(7, 3, 4), nullptr);
  ok("write image(7) name(\"" + at("big.raw") + "\") line(1,2)");
  ok("read image(8) name(\"" + at("big.raw") + "\")");
  const Bytes mixed = bytes_of(image_numero(8)), seven = bytes_of(image_numero(7));
  EXPECT_EQ(Bytes(mixed.begin(), mixed.begin() + 12), Bytes(whole.begin(), whole.begin() + 12));
  EXPECT_EQ(Bytes(mixed.begin() + 12, mixed.begin() + 36), Bytes(seven.begin() + 12, seven.begin() + 36));
  EXPECT_EQ(Bytes(mixed.begin() + 36, mixed.end()), Bytes(whole.begin() + 36, whole.end()));
  EXPECT_NE(fails("write image(7) name(\"" + at("big.raw") + "\") line(1)").find("(current,number)"),
            std::string::npos);
}

}  // namespace
