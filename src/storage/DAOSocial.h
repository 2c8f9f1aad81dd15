#pragma once

#include <QString>

// Sharing and export settings and the social-network accounts: the row of SOCIAL.
class DAOSocial {
public:
    QString share;    // SHARE: address that shared reports go to
    QString export_;  // EXPORT: address that CSV exports go to ("export" is a C++ keyword)
    QString twitLogin;
    QString twitPass;
    QString facebLogin;
    QString facebPass;
};
