#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <array>

class CCorvanaDoc;
class QPushButton;

/// The right pane of the main window: the banner of the centre, the date of today and the buttons
/// of the everyday tasks. All it shows comes from the document.
class CMainView : public QWidget
{
    Q_OBJECT
public:
    explicit CMainView(CCorvanaDoc& doc, QWidget* parent = nullptr);

    /// What the buttons need in width and everything in height. A banner wider than that is cut.
    QSize minimumSizeHint() const override;

    static constexpr int kButtons = 9;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// Where everything stands in a view of some width.
    struct CPlaces
    {
        int m_nCentre = 0;
        QRect m_frame; ///< outer panel of the banner, null without a banner
        QRect m_panel; ///< inner panel
        QList<int> m_lstLineTops; ///< of the lines of the banner
        int m_nDateTop = 0;
        std::array<QRect, kButtons> m_buttons;
        int m_nBottom = 0;
    };

    void MakeButtons();
    QStringList BannerLines() const;
    QSize ButtonSize() const;
    CPlaces PlacesFor(int width) const;
    void PlaceBanner(CPlaces& places, int& y) const;
    void PlaceButtons(CPlaces& places, int y) const;
    void MoveButtons();
    void UpdateFonts();
    void UpdateAccessibleText(QStringList const& banner, QString const& date);
    void MarkDefault(QPushButton* button);

    CCorvanaDoc& m_doc;
    std::array<QPushButton*, kButtons> m_lstButtons = {}; // in reading order
    QFont m_largeFont;
    QFont m_smallFont;
};
