using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

namespace Velmora.Bridge.Boundary;

/// <summary>A text that the native side owns for the time of the call.</summary>
[StructLayout(LayoutKind.Sequential)]
internal unsafe struct NativeText
{
    public char* Data;
    public ulong Length;

    public override readonly string ToString() => Copy(Data, Length);

    public static string Copy(char* data, ulong length) => new(data, 0, checked((int)length));

    public static List<string> CopyList(NativeText* texts, ulong count)
    {
        var list = new List<string>(checked((int)count));
        for (ulong i = 0; i < count; ++i)
            list.Add(texts[i].ToString());
        return list;
    }
}
