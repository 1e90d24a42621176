#include "connection/CConnectionMonitor.h"

#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"

CConnectionMonitor::~CConnectionMonitor()
{
    leave();
}

void CConnectionMonitor::tellLoss()
{
    CMessageBox::warning(qobject_cast<QWidget*>(parent()), k_connectionErrorTitle, k_connectionErrorMessage,
                         QMessageBox::Ok, QMessageBox::Ok);
}
