using System;
using System.Collections;
using System.Collections.Generic;

namespace Quorvex.Tessaport.API.Scripted;

internal enum ListStep { GetEnumerator, MoveNext, Current, Dispose }

/// <summary>A lazy list that fails in one step of its enumeration, after so many elements, and records that it was left properly.</summary>
internal sealed class FailingList<T> : IEnumerable<T>
{
    private readonly List<T> elements;
    private readonly ListStep step;
    private readonly int after;
    private readonly Func<Exception> failure;

    public FailingList(List<T> elements, ListStep step, int after, Func<Exception> failure)
    {
        this.elements = elements;
        this.step = step;
        this.after = after;
        this.failure = failure;
    }

    public IEnumerator<T> GetEnumerator()
    {
        FailIn(ListStep.GetEnumerator, after);
        return new Enumerator(this);
    }

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    private void FailIn(ListStep now, int given)
    {
        if (now == step && given >= after)
            throw failure();
    }

    private sealed class Enumerator : IEnumerator<T>
    {
        private readonly FailingList<T> list;
        private int given;

        public Enumerator(FailingList<T> list) => this.list = list;

        public T Current
        {
            get
            {
                list.FailIn(ListStep.Current, given - 1);
                return list.elements[given - 1];
            }
        }

        object? IEnumerator.Current => Current;

        public bool MoveNext()
        {
            list.FailIn(ListStep.MoveNext, given);
            ++given;
            return given <= list.elements.Count;
        }

        public void Reset() => throw new NotSupportedException();

        public void Dispose()
        {
            Journal.Add(new Call("Dispose"));
            list.FailIn(ListStep.Dispose, given);
        }
    }
}
