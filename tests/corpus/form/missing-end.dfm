object A: TA
  X = (1 2
  object B: TB
