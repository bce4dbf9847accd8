#pragma once

#include <windows.h>

#include <set>

#include "commands/CommandRouter.h"
#include "events/EventRaiser.h"
#include "server/TypeLibrary.h"
#include "shared/Journal.h"

namespace practice {

class AutomationObject;

// Offers the user-interface object to clients, as long as it lives.
class AutomationServer {
public:
    AutomationServer(const TypeLibrary& types, CommandRouter& router, EventRaiser& events,
                     Journal& journal);
    AutomationServer(const AutomationServer&) = delete;
    AutomationServer& operator=(const AutomationServer&) = delete;
    // Takes the class back and disconnects the clients.
    ~AutomationServer();

    HRESULT Open();
    // Takes the class back: no new client can connect.
    void Revoke();

    // For its objects.
    [[nodiscard]] const TypeLibrary& types() const { return types_; }
    CommandRouter& router() { return router_; }
    Journal& journal() { return journal_; }
    void Attach(AutomationObject* object);
    void Detach(AutomationObject* object);

private:
    HRESULT KeepInterfaces();

    const TypeLibrary& types_;
    CommandRouter& router_;
    EventRaiser& events_;
    Journal& journal_;
    std::set<AutomationObject*> objects_;
    DWORD cookie_ = 0;
};

}  // namespace practice
