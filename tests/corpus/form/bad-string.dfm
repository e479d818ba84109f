object A: TA
  S = 'open
  T = #55357
end
