#include "DAOTarget.h"

#include "PedometerDBManager.h"

DAOTarget& DAOTarget::GetInstance() {
    // Filled from the database before anyone sees it; the manager's LoadTargets()
    // overload for a given record keeps this from re-entering GetInstance().
    static DAOTarget instance = [] {
        DAOTarget loaded;
        PedometerDBManager::GetInstance().LoadTargets(loaded);
        return loaded;
    }();
    return instance;
}
