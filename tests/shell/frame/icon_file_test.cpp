#include <gtest/gtest.h>

#include <QImageReader>

#include "project_paths.h"
#include "shell/near.h"
#include "shell/parts/look.h"

namespace kestrel::shell {
namespace {

TEST(IconFile, HoldsThePaintedIconAtEverySizeThatWindowsShows) {
  QImageReader reader(QStringLiteral(KESTREL_SOURCE_DIR "/packaging/windows/kestrel.ico"), "ico");
  QList<int> sides;
  for (int at = 0; at < reader.imageCount(); ++at) {
    ASSERT_TRUE(reader.jumpToImage(at));
    const QImage kept = reader.read();
    ASSERT_FALSE(kept.isNull()) << qPrintable(reader.errorString());
    sides << kept.width();
    const QImage painted = ProgramPicture(kept.width()).toImage();
    EXPECT_EQ(test::PixelsApart(kept, painted), 0) << "tools/program-icon makes the file, side " << kept.width();
  }
  EXPECT_EQ(sides, QList<int>({16, 24, 32, 48, 64, 128, 256}));
}

}  // namespace
}  // namespace kestrel::shell
