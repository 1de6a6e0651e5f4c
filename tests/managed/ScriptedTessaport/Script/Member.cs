using System;
using System.Collections.Generic;
using System.Linq;
using System.Text.Json;

namespace Quorvex.Tessaport.API.Scripted;

/// <summary>A member of the service, and what it answers.</summary>
internal abstract class Member
{
    private static readonly Dictionary<string, Member> all = new();

    protected Member(string name)
    {
        Name = name;
        all.Add(name, this);
    }

    public string Name { get; }

    public static Member Named(string name) => all.TryGetValue(name, out Member? member)
        ? member
        : throw new FormatException($"'{name}' is not a member of the service.");

    public static void ResetAll()
    {
        foreach (Member member in all.Values)
            member.Reset();
    }

    /// <summary>One answer after the other, the last one for good. Each is {"value": …} or {"throw": exception}.</summary>
    public abstract void SetAnswers(JsonElement answers);

    protected abstract void Reset();
}

internal sealed class Member<T> : Member
{
    private readonly Func<JsonElement, T> read;
    private readonly Func<T> byDefault;
    private readonly Queue<Func<T>> answers = new();

    public Member(string name, Func<JsonElement, T> read, Func<T> byDefault) : base(name)
    {
        this.read = read;
        this.byDefault = byDefault;
    }

    public T Answer()
    {
        Func<T> answer = byDefault;
        lock (answers)
        {
            if (answers.Count != 0)
                answer = answers.Count > 1 ? answers.Dequeue() : answers.Peek();
        }
        return answer();
    }

    public override void SetAnswers(JsonElement given)
    {
        Func<T>[] made = given.EnumerateArray().Select(Read).ToArray();
        lock (answers)
        {
            answers.Clear();
            foreach (Func<T> answer in made)
                answers.Enqueue(answer);
        }
    }

    protected override void Reset()
    {
        lock (answers)
            answers.Clear();
    }

    private Func<T> Read(JsonElement answer)
    {
        if (answer.TryGetProperty("throw", out JsonElement failure))
        {
            Func<Exception> make = Failures.Read(failure);
            return () => throw make();
        }
        T value = read(answer.GetProperty("value"));
        return () => value;
    }
}
