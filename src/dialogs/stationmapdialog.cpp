// SPDX-License-Identifier: MIT
#include "dialogs/stationmapdialog.h"

#include "settings/wholefile.h"
#include "stationmap/positiontext.h"
#include "stationmap/stationmapdrawer.h"
#include "stationmap/stationmapfile.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int previewSide = 300;
constexpr int fieldWidth = 120;
constexpr int messageWidth = 200;
constexpr int messageLines = 2;
constexpr int margin = 12;
constexpr int spacing = 8;
constexpr int longestText = 30;

QString toldColor()
{
    return QStringLiteral("color: #ffa02f");
}

QLabel *createMessage()
{
    auto *message = new QLabel;
    message->setStyleSheet(toldColor());
    message->setWordWrap(true);
    message->setFixedSize(messageWidth, messageLines * message->fontMetrics().lineSpacing());
    return message;
}

} // namespace

CStationMapDialog::CStationMapDialog(QString mapPath, QWidget *parent)
    : QDialog(parent), m_mapPath(std::move(mapPath)), m_drawer(new StationMapDrawer(this)),
      m_locator(createField("locatorEdit")), m_latitude(createField("latitudeEdit")),
      m_longitude(createField("longitudeEdit")), m_caption(createField("captionEdit")),
      m_preview(new QLabel(tr("Your map is shown here."))), m_status(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Map of My Station"));
    createLayout();
    connectAll();
    setStation({});
    showPresentMap();
}

CStationMapDialog::~CStationMapDialog() = default;

// ---- The form ----

CStationMapDialog::Field CStationMapDialog::createField(const char *name)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(QLatin1String(name));
    edit->setMaxLength(longestText);
    edit->setFixedWidth(fieldWidth);
    return {edit, createMessage()};
}

void CStationMapDialog::createLayout()
{
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    int row = 0;
    const auto addField = [this, layout, &row](const QString &name, const Field &field) {
        auto *label = new QLabel(name);
        label->setBuddy(field.edit);
        layout->addWidget(label, row, 0);
        layout->addWidget(field.edit, row, 1);
        layout->addWidget(field.message, row, 2);
        ++row;
    };
    addField(tr("&Locator:"), m_locator);
    layout->addWidget(new QLabel(tr("or")), row++, 0);
    addField(tr("L&atitude:"), m_latitude);
    addField(tr("L&ongitude:"), m_longitude);
    layout->setRowMinimumHeight(row++, spacing);
    addField(tr("&Caption:"), m_caption);
    layout->setRowStretch(row++, 1);

    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_preview->setObjectName(QStringLiteral("previewLabel"));
    m_status->setStyleSheet(toldColor());
    m_status->setWordWrap(true);
    layout->addWidget(m_status, row, 0, 1, 3);
    m_preview->setFixedSize(previewSide, previewSide);
    m_preview->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_preview, 0, 3, row + 1, 1);
    layout->addWidget(m_buttons, row + 1, 0, 1, 4);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void CStationMapDialog::connectAll()
{
    connect(m_locator.edit, &QLineEdit::textEdited, this, &CStationMapDialog::onLocatorEdited);
    connect(m_latitude.edit, &QLineEdit::textEdited, this, &CStationMapDialog::onCoordinateEdited);
    connect(m_longitude.edit, &QLineEdit::textEdited, this, &CStationMapDialog::onCoordinateEdited);
    connect(m_caption.edit, &QLineEdit::textEdited, this, &CStationMapDialog::orderPreview);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    connect(m_drawer, &StationMapDrawer::drawn, this, &CStationMapDialog::showPreview);
    connect(m_drawer, &StationMapDrawer::fileDrawn, this, &CStationMapDialog::writeMap);
    // Cancelled while the map is being drawn: it is not written.
    connect(this, &QDialog::rejected, m_drawer, [this] { m_drawer->disconnect(this); });
}

void CStationMapDialog::showPresentMap()
{
    const std::optional<StationMap> present = StationMapFile::read(m_mapPath);
    if (!present)
        return;
    showCoordinates(present->station);
    m_locator.edit->setText(PositionText::locatorOf(present->station));
    m_locator.edit->selectAll();
    if (present->caption != m_locator.edit->text())
        m_caption.edit->setText(present->caption);
    setStation(present->station);
}

// ---- Typing ----

void CStationMapDialog::onLocatorEdited()
{
    const QString text = m_locator.edit->text();
    const std::optional<GeoPosition> station = PositionText::positionOfLocator(text);
    m_locator.tell(station || text.isEmpty() ? QString() : tr("4, 6 or 8 characters, such as GG66rp"));
    m_latitude.tell({});
    m_longitude.tell({});
    showCoordinates(station);
    setStation(station);
}

void CStationMapDialog::onCoordinateEdited()
{
    const auto latitude = PositionText::latitudeOf(m_latitude.edit->text());
    const auto longitude = PositionText::longitudeOf(m_longitude.edit->text());
    const bool isEmpty = m_latitude.edit->text().isEmpty() && m_longitude.edit->text().isEmpty();
    m_locator.tell({});
    m_latitude.tell(latitude || isEmpty ? QString() : tr("-90 to 90, such as -23.5 or 23 30 S"));
    m_longitude.tell(longitude || isEmpty ? QString() : tr("-180 to 180, such as -46.6 or 46 36 W"));

    std::optional<GeoPosition> station;
    if (latitude && longitude)
        station = GeoPosition{*latitude, *longitude};
    m_locator.edit->setText(station ? PositionText::locatorOf(*station) : QString());
    setStation(station);
}

void CStationMapDialog::showCoordinates(const std::optional<GeoPosition> &station)
{
    m_latitude.edit->setText(station ? PositionText::textOf(station->latitude) : QString());
    m_longitude.edit->setText(station ? PositionText::textOf(station->longitude) : QString());
}

void CStationMapDialog::setStation(const std::optional<GeoPosition> &station)
{
    m_station = station;
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(station.has_value());
    orderPreview();
}

// ---- Drawing ----

StationMap CStationMapDialog::map() const
{
    const QString caption = m_caption.edit->text().trimmed();
    return {*m_station, caption.isEmpty() ? PositionText::locatorOf(*m_station) : caption};
}

void CStationMapDialog::orderPreview()
{
    if (m_station)
        m_drawer->order({map(), qRound(previewSide * devicePixelRatioF()), false});
}

void CStationMapDialog::showPreview(const QImage &image)
{
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(1.0 * image.width() / previewSide);
    m_preview->setPixmap(pixmap);
}

void CStationMapDialog::accept()
{
    if (!m_station || !m_locator.edit->isEnabled())
        return;
    setInputEnabled(false);
    m_status->setText(tr("Drawing the map..."));
    m_drawer->order({map(), StationMapFile::usualSide, true});
}

void CStationMapDialog::setInputEnabled(bool enabled)
{
    for (const Field &field : {m_locator, m_latitude, m_longitude, m_caption})
        field.edit->setEnabled(enabled);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(enabled);
}

void CStationMapDialog::writeMap(const QByteArray &file)
{
    if (!file.isEmpty() && writeWholeFile(file, m_mapPath)) {
        QDialog::accept();
        return;
    }
    setInputEnabled(true);
    m_status->setText(tr("%1 cannot be written.").arg(QDir::toNativeSeparators(m_mapPath)));
}

// ---- Field ----

void CStationMapDialog::Field::tell(const QString &text) const
{
    message->setText(text);
    edit->setAccessibleDescription(text);
}
