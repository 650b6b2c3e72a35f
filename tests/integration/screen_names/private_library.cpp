#include "tests/integration/screen_names/private_library.h"

#include <QLabel>

ReportScreen::ReportScreen(QWidget* parent) : QWidget(parent) {
  new QLabel(QStringLiteral("Report of a private library"), this);
}
