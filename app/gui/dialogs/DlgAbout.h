#pragma once

#include <QDialog>

/// Name and version of the program, where its data comes from, and the libraries that it uses.
class DlgAbout : public QDialog
{
    Q_OBJECT
public:
    explicit DlgAbout(QWidget* parent = nullptr);
};
