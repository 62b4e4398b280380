#include "app/gui/SettingsSaver.h"

#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeMainView.h"

namespace {

using SettingsSaverTest = SettingsFixture;

TEST_F(SettingsSaverTest, EachOfTwoDamagedSettingsFilesIsNamed)
{
    write(mainFile(), QByteArray(3000, '\xA5'));
    Settings settings(mainFile(), m_random);
    const QString profile = settings.profileFile("airliner.ini"_q);
    write(profile, QByteArray(3000, '\xA5'));
    settings.changeProfile("airliner.ini"_q);
    FakeMainView page;
    SettingsSaver(settings, mainFile(), page).replaceDamaged();
    EXPECT_TRUE(page.notices[Notice::Settings].contains("cirrilon.ini.damaged"_q));
    EXPECT_TRUE(page.notices[Notice::Settings].contains("airliner.ini.damaged"_q));
    EXPECT_TRUE(QFile::exists(Settings::damagedName(profile)));
}

} // namespace
