namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// Objects by the numbers that a test gives them. A number names one object permanently: asking again returns the same
/// object, or fails once it was collected. Nothing here keeps an object alive.
/// </summary>
internal sealed class Identities<T> where T : class
{
    private readonly Dictionary<int, WeakReference<T>> _objects = new();

    public T Get(int number, Func<T> make)
    {
        lock (_objects)
        {
            if (_objects.TryGetValue(number, out WeakReference<T>? known))
            {
                return known.TryGetTarget(out T? found)
                    ? found
                    : throw new InvalidOperationException($"{typeof(T).Name} {number} was collected; give a new one another number.");
            }
            T made = make();
            _objects.Add(number, new WeakReference<T>(made));
            return made;
        }
    }

    public int[] Alive()
    {
        lock (_objects)
            return _objects.Where(entry => entry.Value.TryGetTarget(out _)).Select(entry => entry.Key).Order().ToArray();
    }

    public void Clear()
    {
        lock (_objects)
            _objects.Clear();
    }
}
