#include "tests/integration/screens/private_library.h"

#include <QLabel>

ReportScreen::ReportScreen(QWidget* parent) : QWidget(parent) {
  new QLabel(QStringLiteral("Report of a private library"), this);
}
