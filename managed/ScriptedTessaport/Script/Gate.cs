namespace Quorvex.Tessaport.API.Scripted;

/// <summary>Where the calls of a member wait: for a time, or until they are released.</summary>
internal sealed class Gate
{
    // Read without the lock, so that a gate that was never used costs nothing.
    private volatile bool _isUsed;
    private long _delay;
    private long _opened;
    private bool _isHeld;
    private int _held;

    public void Delay(long milliseconds)
    {
        lock (this)
        {
            _delay = milliseconds;
            _isUsed = true;
        }
    }

    public void Hold()
    {
        lock (this)
        {
            _isHeld = true;
            _isUsed = true;
        }
    }

    /// <summary>Lets the calls that are held continue, and those to come.</summary>
    public void Release()
    {
        lock (this)
        {
            _isHeld = false;
            Monitor.PulseAll(this);
        }
    }

    /// <summary>Lets all calls continue at once, those that wait for a time too.</summary>
    public void Open()
    {
        lock (this)
        {
            _delay = 0;
            ++_opened;
            Release();
        }
    }

    /// <summary>Waits until a call is held; false if no call is held after so many milliseconds.</summary>
    public bool AwaitHeld(long milliseconds)
    {
        lock (this)
        {
            long end = Environment.TickCount64 + milliseconds;
            while (_held == 0)
            {
                if (!WaitUntil(end))
                    return false;
            }
            return true;
        }
    }

    public void Pass()
    {
        if (!_isUsed)
            return;
        lock (this)
        {
            PassHold();
            PassDelay();
        }
    }

    private void PassHold()
    {
        if (!_isHeld)
            return;
        ++_held;
        Monitor.PulseAll(this);
        while (_isHeld)
            Monitor.Wait(this);
        --_held;
    }

    private void PassDelay()
    {
        long end = Environment.TickCount64 + _delay;
        long opened = _opened;
        while (opened == _opened && WaitUntil(end))
        {
        }
    }

    // Returns false once the time is over.
    private bool WaitUntil(long end)
    {
        long left = end - Environment.TickCount64;
        if (left <= 0)
            return false;
        Monitor.Wait(this, (int)Math.Min(left, int.MaxValue));
        return true;
    }
}
