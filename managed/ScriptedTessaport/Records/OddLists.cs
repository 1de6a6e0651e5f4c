using System.Collections;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>
/// A collection that can be enumerated as a sequence of its records, and fails when anything else is asked of it.
/// </summary>
internal sealed class EnumerableOnly<T> : IList<T>, IReadOnlyList<T>, IList
{
    private readonly List<T> _elements;

    public EnumerableOnly(List<T> elements) => _elements = elements;

    public int Count => throw Refusal();
    public bool IsReadOnly => throw Refusal();
    public bool IsFixedSize => throw Refusal();
    public bool IsSynchronized => throw Refusal();
    public object SyncRoot => throw Refusal();

    public T this[int index]
    {
        get => throw Refusal();
        set => throw Refusal();
    }

    object? IList.this[int index]
    {
        get => throw Refusal();
        set => throw Refusal();
    }

    public IEnumerator<T> GetEnumerator() => _elements.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => throw Refusal();

    public int IndexOf(T item) => throw Refusal();
    public int IndexOf(object? value) => throw Refusal();
    public bool Contains(T item) => throw Refusal();
    public bool Contains(object? value) => throw Refusal();
    public void CopyTo(T[] array, int index) => throw Refusal();
    public void CopyTo(Array array, int index) => throw Refusal();
    public void Add(T item) => throw Refusal();
    public int Add(object? value) => throw Refusal();
    public void Insert(int index, T item) => throw Refusal();
    public void Insert(int index, object? value) => throw Refusal();
    public bool Remove(T item) => throw Refusal();
    public void Remove(object? value) => throw Refusal();
    public void RemoveAt(int index) => throw Refusal();
    public void Clear() => throw Refusal();

    private static InvalidOperationException Refusal() => new("The list was asked for more than its elements.");
}

/// <summary>A List with an enumerator of its own, which begins at the end.</summary>
internal sealed class ReversingList<T> : List<T>, IEnumerable<T>
{
    public ReversingList(IEnumerable<T> elements) : base(elements)
    {
    }

    IEnumerator<T> IEnumerable<T>.GetEnumerator() => Enumerable.Range(1, Count).Select(i => this[Count - i]).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => ((IEnumerable<T>)this).GetEnumerator();
}
