#pragma once

class ActivityGate;
class CollectThread;
class StopSource;

/**
 * The end of a client whose thread or driver may still be at work.
 *
 * The event loop of whoever deletes the client waits for none of it: not for a driver, and not for
 * many deletions in one go.
 *
 * Threads:   requestStop() any; endOrPutOff() the one that the client lives in.
 * Ownership: the client's, which is deleted with it.
 */
class ClientDeletion
{
public:
    /** @param stop, gate  of the client's polling */
    ClientDeletion(CollectThread &client, StopSource &stop, ActivityGate &gate);

    /** Ends the waits of a cycle and the event loop of run(); the driver has to return by itself. */
    void requestStop();

    /** Deletes the client, or comes back to it later. Nothing of it may be used afterwards. */
    void endOrPutOff();

private:
    void putOff();

    CollectThread &m_client;
    StopSource &m_stop;
    ActivityGate &m_gate;
    bool m_isPutOff = false;
};
