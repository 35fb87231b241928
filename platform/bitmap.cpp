#include "TAVIX20/platform/bitmap.h"

#include <QImage>

struct HBITMAP__ {
    QImage image;
};

HBITMAP CreateBitmapHandle(const QImage &image) {
    return image.isNull() ? nullptr : new HBITMAP__{image};
}

QImage GetBitmapImage(HBITMAP bitmap) {
    return bitmap ? bitmap->image : QImage();
}

int DeleteObject(HBITMAP bitmap) {
    if (!bitmap)
        return 0;
    delete bitmap;
    return 1;
}
