#pragma once

#include <QLabel>
#include <QTimer>

// A strip across the top of a screen that appears while what the user records is not
// being saved: a database that cannot be used since start-up, or a write that failed
// (full disk, damage found). It says why, and disappears when both databases save.
// Otherwise it tells why the accelerometer counts nothing or poorly (SensorStatus: busy
// in another program, a rate that cannot be set) while that lasts.
class StorageNotice : public QLabel {
    Q_OBJECT
public:
    explicit StorageNotice(QWidget* parent);
    // Reads the databases' state now (also done every few seconds while the window shows).
    void Refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnTimer();

    QTimer timer_;
    QWidget* watchedWindow_ = nullptr;
};
