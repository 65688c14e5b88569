#include "support/testing.h"
#include "widgets/BitMaps.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>

using namespace drivewiz;

TEST(BitMapsTest, FormHoldsTheFourPicturesAndTheyRenderAtAnySize)
{
    TFrmBitMaps form;
    for (QLabel *image : {form.ImgBE_KBQ, form.ImgBE_KBM, form.ImgOK, form.ImgCancel}) {
        ASSERT_NE(image, nullptr);
        EXPECT_FALSE(image->pixmap().isNull()) << image->objectName().toStdString();
        EXPECT_EQ(form.findChild<QLabel *>(image->objectName()), image);
    }
    EXPECT_EQ(form.ImgBE_KBQ->objectName(), "ImgBE_KBQ");
    EXPECT_FALSE(form.isVisible());

    for (TBitMap which : {TBitMap::BE_KBQ, TBitMap::BE_KBM, TBitMap::OK, TBitMap::Cancel}) {
        EXPECT_FALSE(wizBitMapSize(which).isEmpty());
        const QPixmap small = wizBitMap(which, QSize(20, 12));
        EXPECT_EQ(small.size(), QSize(20, 12));
        EXPECT_EQ(wizBitMap(which).size(), wizBitMapSize(which));
    }
    // Something is drawn: the middle of the check mark's stroke is opaque green.
    const QImage ok = wizBitMap(TBitMap::OK, QSize(32, 32)).toImage();
    const QColor middle = ok.pixelColor(13, 25);
    EXPECT_GT(middle.alpha(), 200);
    EXPECT_GT(middle.green(), middle.red());
}
