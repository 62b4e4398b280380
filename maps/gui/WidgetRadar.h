#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>

#include <array>
#include <cstddef>
#include <vector>

class NoteLabel;
class QCheckBox;
class QColor;
class QDial;
class QGraphicsRectItem;
class QGraphicsScene;
class QGraphicsView;
class QGridLayout;
class QLabel;
class QPushButton;

/// The weather radar: the simulator's cloud density around the aircraft as a picture of 64 x 64
/// cells that turns with the aircraft. A window of its own; while it is hidden nothing is asked. It
/// knows no simulator: whoever makes it answers sigRequestClouds and says how the connection
/// stands. Main thread.
class WidgetRadar : public QWidget
{
    Q_OBJECT
public:
    static constexpr std::size_t kRows = 64;
    static constexpr std::size_t kColumns = 64;

    explicit WidgetRadar(QWidget* parent = nullptr);

public Q_SLOTS:
    /// Starts or stops the repeated requests as the check box says.
    void OnSetTimer();
    void OnRefreshClouds();
    /// Paints a grid, row by row. A shorter one leaves the other cells as they were, of a longer
    /// one the rest is ignored.
    void setCloudsRGB(std::vector<unsigned char>& cloudsRGB);
    /// Degrees; the next grid is turned by it. What isn't a number counts as north.
    void setHeading(double heading);
    /// Whether there is a simulator to ask.
    void setConnected(bool connected);
    /// The connection has no way to ask for clouds.
    void showNoCloudMap();
    /// A request failed; `reason` is a text for the pilot.
    void showFailure(const QString& reason);

Q_SIGNALS:
    /// Asks for the clouds around the aircraft: `range` from the middle to a corner in NM, `tilt`
    /// the height of what is looked at in feet.
    void sigRequestClouds(int range, int tilt);
    void sigDebugString(QString item, int level);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildPicture();
    void buildControls();
    void addDial(QGridLayout& grid, int column, QDial* dial, QLabel* title, QLabel* value);
    void retranslateUi();
    void showConnection();
    void turnPicture();

    QTimer m_timer{this};
    QGraphicsScene* m_scene;
    QGraphicsView* m_view;
    QDial* m_range;
    QLabel* m_rangeTitle;
    QLabel* m_rangeValue;
    QDial* m_tilt;
    QLabel* m_tiltTitle;
    QLabel* m_tiltValue;
    QCheckBox* m_refresh;
    QPushButton* m_request;
    NoteLabel* m_note;
    bool m_connected = false;
    double m_heading = 0.0;  ///< degrees, of the next grid
    double m_rotation = 0.0; ///< degrees, of the last grid
    std::vector<unsigned char> m_clouds;
    std::array<std::array<QGraphicsRectItem*, kColumns>, kRows> m_cells{};
};

/// The colour of a cloud density: black to green up to 12, then yellow to red, above 25 red with a
/// share of blue.
QColor radarColour(unsigned char density);
