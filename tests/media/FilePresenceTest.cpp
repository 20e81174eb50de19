// SPDX-License-Identifier: MIT
#include "media/FilePresence.h"

#include "platform/runtime/Error.h"

#include <QSemaphore>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using runtime::Presence;

// The drive responds only after the user-interface thread has handled an event, so a blocked thread would time out.
TEST(FilePresence, WindowsRespondWhileADriveIsSlow) {
  QSemaphore answer;
  const runtime::ProbeLookScope look([&answer](const QString&) {
    answer.acquire();
    answer.release();
    return 0;
  });
  QTimer::singleShot(0, [&answer] { answer.release(); });
  EXPECT_EQ(LookFor(u"Z:\\ergens\\a.wav"_s), Presence::There);
}

TEST(FilePresence, ErrorDistinguishesMissingUnreachableAndDenied) {
  const auto description = [](const QString& path, Presence presence) {
    try {
      RequirePresent(path, presence);
    } catch (const runtime::Error& error) {
      return error.Description().toStdString();
    }
    return std::string();
  };
  EXPECT_EQ(description(u"Z:\\a.wav"_s, Presence::There), "");
  EXPECT_EQ(description(u"Z:\\a.wav"_s, Presence::NotThere), "Het geluidsbestand 'Z:\\a.wav' bestaat niet.");
  EXPECT_EQ(description(u"Z:\\a.wav"_s, Presence::NotReachable),
            "Het geluidsbestand 'Z:\\a.wav' is niet bereikbaar: de schijf of netwerkmap antwoordt niet.");
  EXPECT_EQ(description(u"Z:\\a.wav"_s, Presence::Denied),
            "Het geluidsbestand 'Z:\\a.wav' is niet toegankelijk: toegang geweigerd.");
  EXPECT_NE(description(u"Q:\\a.wav"_s, Presence::NotReachable).find("Q:"), std::string::npos);
}
