#pragma once

#include "app/gui/dialogs/SettingsPage.h"

/// How weather is fetched, composed and set.
class SettingsPageWeather : public SettingsPage
{
    Q_OBJECT
public:
    explicit SettingsPageWeather(QWidget* parent = nullptr);

private:
    void buildUpdates();
    void buildWind();
    void buildVisibility();
    void buildClouds();
};
