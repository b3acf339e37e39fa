// A signal of Qt's own kind. It stands alone because moc reads what it includes.
#pragma once

#include <QObject>

class Sender : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void fired(int value);
};
