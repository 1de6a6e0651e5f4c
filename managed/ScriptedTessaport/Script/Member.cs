namespace Quorvex.Tessaport.API.Scripted;

/// <summary>A member of the service, and what it answers.</summary>
internal abstract class Member
{
    private static readonly Dictionary<string, Member> All = new();

    protected Member(string name)
    {
        Name = name;
        All.Add(name, this);
    }

    public string Name { get; }

    public Gate Gate { get; } = new();

    public static Member Named(string name) => All.TryGetValue(name, out Member? member)
        ? member
        : throw new FormatException($"'{name}' is not a member of the service.");

    public static void ResetAll()
    {
        foreach (Member member in All.Values)
            member.Reset();
        EndlessLists.End();
    }

    /// <summary>Sets the answers in turn; the last one stays. Each is {"value": …} or {"throw": exception}.</summary>
    public abstract void SetAnswers(JsonElement answers);

    /// <summary>Sets the answers in turn to calls with this item.</summary>
    public abstract void SetAnswersFor(string item, JsonElement answers);

    /// <summary>Adds answers that are given once each, before all others.</summary>
    public abstract void AddNext(JsonElement answers);

    /// <summary>Restores the answer without a script, and lets calls that wait continue.</summary>
    public abstract void Reset();
}

internal sealed class Member<T> : Member
{
    private readonly Func<JsonElement, T> _read;
    private readonly Func<T> _byDefault;
    private readonly Queue<Func<T>> _next = new();
    private readonly Queue<Func<T>> _answers = new();
    private readonly Dictionary<int, Queue<Func<T>>> _answersForItems = new();

    public Member(string name, Func<JsonElement, T> read, Func<T> byDefault) : base(name)
    {
        _read = read;
        _byDefault = byDefault;
    }

    public T Answer(ItemId? item = null)
    {
        Gate.Pass();
        return Choose(item)();
    }

    public override void SetAnswers(JsonElement answers) => Set(_answers, ReadAll(answers));

    public override void SetAnswersFor(string item, JsonElement answers)
    {
        Func<T>[] made = ReadAll(answers);
        lock (_answers)
        {
            int number = Names.NumberOf(item);
            if (!_answersForItems.TryGetValue(number, out Queue<Func<T>>? queue))
                _answersForItems.Add(number, queue = new());
            Set(queue, made);
        }
    }

    public override void AddNext(JsonElement answers)
    {
        Func<T>[] made = ReadAll(answers);
        lock (_answers)
        {
            foreach (Func<T> answer in made)
                _next.Enqueue(answer);
        }
    }

    public override void Reset()
    {
        lock (_answers)
        {
            _next.Clear();
            _answers.Clear();
            _answersForItems.Clear();
        }
        Gate.Open();
    }

    private Func<T> Choose(ItemId? item)
    {
        lock (_answers)
        {
            if (_next.Count != 0)
                return _next.Dequeue();
            if (item == null || !_answersForItems.TryGetValue(item.Number, out Queue<Func<T>>? queue))
                queue = _answers;
            return queue.Count > 1 ? queue.Dequeue() : queue.Count == 1 ? queue.Peek() : _byDefault;
        }
    }

    private void Set(Queue<Func<T>> queue, Func<T>[] answers)
    {
        lock (_answers)
        {
            queue.Clear();
            foreach (Func<T> answer in answers)
                queue.Enqueue(answer);
        }
    }

    private Func<T>[] ReadAll(JsonElement answers) => answers.EnumerateArray().Select(Read).ToArray();

    private Func<T> Read(JsonElement answer)
    {
        if (answer.TryGetProperty("throw", out JsonElement failure))
        {
            Func<Exception> make = Failures.Read(failure);
            return () => throw make();
        }
        T value = _read(answer.GetProperty("value"));
        return () => value;
    }
}
