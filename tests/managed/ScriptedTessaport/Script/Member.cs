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

    public static Member Named(string name) => All.TryGetValue(name, out Member? member)
        ? member
        : throw new FormatException($"'{name}' is not a member of the service.");

    public static void ResetAll()
    {
        foreach (Member member in All.Values)
            member.Reset();
    }

    /// <summary>Sets the answers in turn; the last one stays. Each is {"value": …} or {"throw": exception}.</summary>
    public abstract void SetAnswers(JsonElement answers);

    protected abstract void Reset();
}

internal sealed class Member<T> : Member
{
    private readonly Func<JsonElement, T> _read;
    private readonly Func<T> _byDefault;
    private readonly Queue<Func<T>> _answers = new();

    public Member(string name, Func<JsonElement, T> read, Func<T> byDefault) : base(name)
    {
        _read = read;
        _byDefault = byDefault;
    }

    public T Answer()
    {
        Func<T> answer = _byDefault;
        lock (_answers)
        {
            if (_answers.Count != 0)
                answer = _answers.Count > 1 ? _answers.Dequeue() : _answers.Peek();
        }
        return answer();
    }

    public override void SetAnswers(JsonElement given)
    {
        Func<T>[] made = given.EnumerateArray().Select(Read).ToArray();
        lock (_answers)
        {
            _answers.Clear();
            foreach (Func<T> answer in made)
                _answers.Enqueue(answer);
        }
    }

    protected override void Reset()
    {
        lock (_answers)
            _answers.Clear();
    }

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
