// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/stationmap.h"

#include <QDialog>

#include <optional>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class StationMapDrawer;

/// Draws the azimuthal map of the operator's own station and puts it in the place of a map file. The station
/// is given by a locator or by latitude and longitude: the one that is typed fills in the other.
///
///     typed -> checked, message beside the field -> preview
///     OK    -> drawn in a thread -> written -> accepted
///
/// Begins with what the present map was drawn for, when that is known. Accepted means that the map is in
/// place; when it cannot be written the dialog says so and stays open.
class CStationMapDialog : public QDialog
{
    Q_OBJECT

public:
    /// `mapPath` is the file that is read at the beginning and replaced at the end.
    explicit CStationMapDialog(QString mapPath, QWidget *parent = nullptr);
    ~CStationMapDialog() override;

public slots:
    void accept() override;

private:
    struct Field
    {
        void tell(const QString &text) const;

        QLineEdit *edit = nullptr;
        QLabel *message = nullptr;
    };
    Field createField(const char *name);
    void createLayout();
    void connectAll();
    void showPresentMap();

    void onLocatorEdited();
    void onCoordinateEdited();
    void showCoordinates(const std::optional<GeoPosition> &station);
    void setStation(const std::optional<GeoPosition> &station);

    StationMap map() const;
    void orderPreview();
    void showPreview(const QImage &image);
    void setInputEnabled(bool enabled);
    void writeMap(const QByteArray &file);

    QString m_mapPath;
    /// The position in the fields; none while they hold no valid one.
    std::optional<GeoPosition> m_station;
    StationMapDrawer *m_drawer;
    Field m_locator;
    Field m_latitude;
    Field m_longitude;
    Field m_caption;
    QLabel *m_preview;
    QLabel *m_status;
    QDialogButtonBox *m_buttons;
};
