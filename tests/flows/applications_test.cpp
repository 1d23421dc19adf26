#include "tests/flows/flow_test.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace corvane::test {

namespace {

const QString kChrome = QStringLiteral("com.google.Chrome");
const QString kBundle = QStringLiteral("/Applications/Example.app");

class Applications : public FlowTest {
protected:
    Applications()
        : FlowTest(QStringLiteral("bare"))
    {
        QDir().mkpath(kBundle + QStringLiteral("/Contents"));
    }
    ~Applications() override { QDir(kBundle).removeRecursively(); }

    static QString list() { return kBundle + QStringLiteral("/Contents/Info.plist"); }

    /// Whether Chrome is found when a bundle describes itself like this.
    bool chromeIsFound(const QByteArray &text)
    {
        QFile file(list());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return workspace->hasApplication(kChrome);
    }
};

} // namespace

TEST_F(Applications, An_application_is_known_by_its_bundle_identifier)
{
    EXPECT_TRUE(chromeIsFound("<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"><plist version=\"1.0\"><dict>"
                              "<key>A</key><array><dict><key>B</key><true/></dict></array>"
                              "<key>CFBundleIdentifier</key>\n\t<string>com.google.Chrome</string></dict></plist>"));
    Mac::ctl(QStringLiteral("app add org.mozilla.firefox"));
    EXPECT_TRUE(workspace->hasApplication(QStringLiteral("org.mozilla.firefox")));
    EXPECT_TRUE(workspace->hasApplication(QStringLiteral("com.apple.Safari")));
    EXPECT_FALSE(workspace->hasApplication(QStringLiteral("com.brave.Browser")));
}

TEST_F(Applications, An_identifier_elsewhere_in_the_list_does_not_count)
{
    for (const char *text : {
             "<plist><dict><key>CFBundleIdentifier</key><string>org.example.a</string>"
             "<key>OpensWith</key><string>com.google.Chrome</string></dict></plist>",
             "<plist><dict><key>Parts</key><dict><key>CFBundleIdentifier</key><string>com.google.Chrome</string></dict>"
             "</dict></plist>",
             "<plist><dict><key>CFBundleIdentifier</key><array><string>com.google.Chrome</string></array></dict></"
             "plist>",
             "<plist><dict><key>Note</key><string>CFBundleIdentifier</string><string>com.google.Chrome</string></dict>"
             "</plist>",
             "<plist><dict><key>CFBundleIdentifier</key><string>com.google.Chrome.helper</string></dict></plist>",
             "<plist><dict><!-- <key>CFBundleIdentifier</key><string>com.google.Chrome</string> --></dict></plist>",
             "<plist><array><key>CFBundleIdentifier</key><string>com.google.Chrome</string></array></plist>",
         }) {
        EXPECT_FALSE(chromeIsFound(text)) << text;
    }
}

TEST_F(Applications, A_list_that_is_none_is_passed_over)
{
    QByteArray laughs = "<!DOCTYPE plist [<!ENTITY a \"ha\">";
    for (char name = 'b'; name < 'k'; ++name)
        laughs += QByteArray("<!ENTITY ") + name + " \"" +
                  QByteArray("&" + QByteArray(1, char(name - 1)) + ';').repeated(10) + "\">";
    laughs += "]><plist><dict><key>&j;</key></dict></plist>";
    const QByteArray deep = "<plist><dict>" + QByteArray("<array>").repeated(100'000);
    for (const QByteArray &text :
         {QByteArray(), QByteArray("bplist00\xd1\x01\x02"), QByteArray("\xff\xfe\x00<", 4),
          QByteArray("<plist><dict><key>CFBundleIdentifier"), laughs, deep, QByteArray(8 << 20, ' ')}) {
        EXPECT_FALSE(chromeIsFound(text)) << text.left(80).constData();
        EXPECT_TRUE(workspace->hasApplication(QStringLiteral("com.apple.Safari"))) << "the others are still found";
    }
}

TEST_F(Applications, A_folder_a_pipe_and_a_circle_in_place_of_the_list_are_passed_over)
{
    QDir().mkpath(list());
    EXPECT_FALSE(workspace->hasApplication(kChrome));
    QDir().rmdir(list());
    ASSERT_EQ(::mkfifo(QFile::encodeName(list()).constData(), 0600), 0);
    EXPECT_FALSE(workspace->hasApplication(kChrome));
    QFile::remove(list());
    QFile::link(list(), list());
    EXPECT_FALSE(workspace->hasApplication(kChrome));
    QFile::remove(list());
    QFile::link(QStringLiteral("/dev/zero"), list());
    EXPECT_FALSE(workspace->hasApplication(kChrome));
}

} // namespace corvane::test
