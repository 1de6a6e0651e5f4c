Console.WriteLine("hello");
