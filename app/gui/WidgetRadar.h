#pragma once

#include <QTimer>
#include <QWidget>

#include <array>
#include <cstddef>
#include <vector>

class Controller;
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
/// cells that turns with the aircraft. A window of its own; while it is hidden nothing is asked.
/// Main thread.
class WidgetRadar : public QWidget
{
    Q_OBJECT
public:
    static constexpr std::size_t kRows = 64;
    static constexpr std::size_t kColumns = 64;

    /// The controller must outlive the widget.
    explicit WidgetRadar(Controller& controller, QWidget* parent = nullptr);

    const QGraphicsRectItem& cell(std::size_t row, std::size_t column) const
    {
        return *m_cells[row][column];
    }
    /// What the picture lacks, as it is told to the pilot; empty if nothing.
    QString hint() const;

public Q_SLOTS:
    /// Starts or stops the repeated requests as the check box says.
    void OnSetTimer();
    void OnRefreshClouds();
    /// Paints a grid, row by row. A shorter one leaves the other cells as they were, of a longer
    /// one the rest is ignored.
    void setCloudsRGB(std::vector<unsigned char>& cloudsRGB);

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
    void onJobFinished(int jobId, int error);
    void showConnection();
    void turnPicture();

    Controller& m_controller;
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
    double m_rotation = 0.0; ///< degrees, of the last grid
    std::vector<unsigned char> m_clouds;
    std::array<std::array<QGraphicsRectItem*, kColumns>, kRows> m_cells{};
};

/// The colour of a cloud density: black to green up to 12, then yellow to red, above 25 red with a
/// share of blue.
QColor RadarColour(unsigned char density);
