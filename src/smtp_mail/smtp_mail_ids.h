// The numbers and the identifier by which hosts and the module's resources know SMTPMail. Read by
// C++, by the resource compiler, and by the build, which makes registry script and type library
// from the first four.
#pragma once

#define SMTP_MAIL_CLSID "4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5"
#define SMTP_MAIL_REGISTRY_SCRIPT 101
#define SMTP_MAIL_ICON 203
// The registry key has the empty subkey "Programmable", which only the first class ever had; hosts
// have seen the keys this way for long.
#define SMTP_MAIL_PROGRAMMABLE 1

#define SMTP_MAIL_DIALOG 112
#define SMTP_MAIL_NAME 203
#define SMTP_MAIL_GATEWAY 202
#define SMTP_MAIL_TO 205
#define SMTP_MAIL_FROM 204
#define SMTP_MAIL_SUBJECT 206
#define SMTP_MAIL_MESSAGE 201
#define SMTP_MAIL_HELP 208
