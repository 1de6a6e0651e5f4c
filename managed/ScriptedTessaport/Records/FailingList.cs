using System.Collections;

namespace Quorvex.Tessaport.API.Scripted;

internal enum ListStep { GetEnumerator, MoveNext, Current, Dispose }

/// <summary>
/// A lazy list that fails in one step of its enumeration after a number of elements, and records that its enumerator was
/// disposed.
/// </summary>
internal sealed class FailingList<T> : IEnumerable<T>
{
    private readonly List<T> _elements;
    private readonly ListStep _step;
    private readonly int _after;
    private readonly Func<Exception> _failure;

    public FailingList(List<T> elements, ListStep step, int after, Func<Exception> failure)
    {
        _elements = elements;
        _step = step;
        _after = after;
        _failure = failure;
    }

    public IEnumerator<T> GetEnumerator()
    {
        FailIn(ListStep.GetEnumerator, _after);
        return new Enumerator(this);
    }

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    private void FailIn(ListStep now, int given)
    {
        if (now == _step && given >= _after)
            throw _failure();
    }

    private sealed class Enumerator : IEnumerator<T>
    {
        private readonly FailingList<T> _list;
        private int _given;

        public Enumerator(FailingList<T> list) => _list = list;

        public T Current
        {
            get
            {
                _list.FailIn(ListStep.Current, _given - 1);
                return _list._elements[_given - 1];
            }
        }

        object? IEnumerator.Current => Current;

        public bool MoveNext()
        {
            _list.FailIn(ListStep.MoveNext, _given);
            ++_given;
            return _given <= _list._elements.Count;
        }

        public void Reset() => throw new NotSupportedException();

        public void Dispose()
        {
            Journal.Add(new Call("Dispose"));
            _list.FailIn(ListStep.Dispose, _given);
        }
    }
}
