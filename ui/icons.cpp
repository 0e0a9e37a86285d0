#include "ui/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

QPixmap Canvas(int size) {
    QPixmap pm(size, size);
    pm.fill(Qt::transparent);
    return pm;
}

}  // namespace

QIcon AppIcon() {
    QIcon icon;
    for (int size : {16, 32, 64}) {
        QPixmap pm = Canvas(size);
        QPainter p(&pm);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x2f, 0x5d, 0x8a));
        p.drawRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), size / 6.0, size / 6.0);
        // A coarse pixel grid behind a smooth "G": from outline to bitmap.
        p.setBrush(QColor(255, 255, 255, 60));
        int cell = size / 8;
        for (int y = 1; y < 7; ++y)
            for (int x = 1; x < 7; ++x)
                if ((x + y) % 2 == 0) p.drawRect(x * cell, y * cell, cell, cell);
        QFont f("DejaVu Sans");
        f.setBold(true);
        f.setPixelSize(size * 3 / 4);
        p.setFont(f);
        p.setPen(Qt::white);
        p.drawText(pm.rect(), Qt::AlignCenter, "G");
        p.end();
        icon.addPixmap(pm);
    }
    return icon;
}

QIcon ScalableFaceIcon() {
    QPixmap pm = Canvas(16);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath a;
    a.moveTo(2, 14);
    a.lineTo(8, 2);
    a.lineTo(14, 14);
    a.moveTo(4.5, 9.5);
    a.lineTo(11.5, 9.5);
    p.setPen(QPen(QColor(0x1f, 0x5f, 0xa8), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(a);
    p.end();
    return QIcon(pm);
}

QIcon BitmapFaceIcon() {
    static const char* rows[] = {"..##..", ".#..#.", "#....#", "######", "#....#", "#....#"};
    QPixmap pm = Canvas(16);
    QPainter p(&pm);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            if (rows[y][x] == '#') p.fillRect(2 + x * 2, 2 + y * 2, 2, 2, QColor(0x8a, 0x4b, 0x1f));
    p.end();
    return QIcon(pm);
}
